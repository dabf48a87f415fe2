// Tests of what is said of the controllers, against what they do.

#include "softsynth/parameters/control_help.h"

#include <gtest/gtest.h>

#include "softsynth/parameters/control_meaning.h"
#include "softsynth/parameters/controller_table.h"
#include "softsynth/parameters/effect_type.h"
#include "softsynth/parameters/families.h"
#include "softsynth/parameters/filter_type.h"
#include "softsynth/parameters/influence.h"
#include "softsynth/parameters/osc_type.h"
#include "tests/support/engine_host.h"

namespace tarquil {

namespace {

TEST(ControlHelp, EveryControllerHasASentenceAndWhatIsDimmedAReason) {
    for (unsigned type = 0; type <= MONO_EFFECT_EXCITER; type++) {
        ControllerBytes bytes = default_controller_bytes();
        bytes[CTRL_CHANFX1_TYPE] = bytes[CTRL_CHANFX1B_TYPE] = uint8_t(type);
        bytes[CTRL_CHANFX2_TYPE] = uint8_t(type % 4);
        bytes[CTRL_CHANFX1_PARAM3] = FILTER_LADDER_START_MARKER;
        bytes[CTRL_FILTER1_TYPE] = uint8_t(type * 4);
        for (const ControllerInfo& info : controller_rows()) {
            const bool is_used = meaning_of(info.number, bytes).is_used;
            EXPECT_EQ(why_without_effect(info.number, bytes).empty(), is_used) << info.key;
            const bool is_nothing =
                std::string(info.name).find("parameter") != std::string::npos && !is_used;
            if (!is_nothing) {
                EXPECT_NE(control_help(info.number, bytes), "") << info.key;
            }
        }
    }
    const ControllerBytes& bytes = default_controller_bytes();
    EXPECT_EQ(control_help(CTRL_FILTER1_CUTOFF, bytes),
              "The frequency where it begins to act, from 20.0 Hz to 20.5 kHz");
    EXPECT_EQ(control_range(CTRL_OSC1_TYPE, bytes), "off, sine, saw, square, triangle, noise");
}

// A sound that makes use of everything, so that only the time of a change decides.
class HeldNote : public testing::Test {
  protected:
    static std::vector<float> render(unsigned number, int change) {
        EngineHost host;
        const auto set = [&](unsigned controller, int value) { host.set(0, controller, value); };
        for (unsigned slot = 0; slot < NUM_MODULATION_SLOTS; slot++) {
            const ModulationRows rows = modulation_rows(slot);
            set(rows.source, slot == 0 ? INFL_LFO1 : slot % 2 == 0 ? INFL_ENV3 : INFL_LFO2);
            set(rows.amount, 70);
        }
        set(modulation_rows(1).source, INFL_ENV2);
        for (unsigned i = 0; i < NUM_OSCILLATORS; i++)
            set(oscillator_rows(i).copies, 2);
        set(CTRL_OSC1_RANDOMIZE_PHASE, 90);
        set(CTRL_OSC1_OSC2_MIX, 60);
        set(CTRL_OSC3_VOLUME, 80);
        set(CTRL_FILTER1_TYPE, FILTER_LOWPASS);
        set(CTRL_FILTER1_DEPTH, 2);
        set(CTRL_FILTER1_CUTOFF, 80);
        set(CTRL_AUX1_LEVEL, 90);
        set(CTRL_AUX2_LEVEL, 90);
        set(CTRL_CHANFX1_TYPE, MONO_EFFECT_LOFI);
        set(CTRL_CHANFX2_TYPE, STEREO_EFFECT_CHORUS);
        for (unsigned i = 0; i < NUM_CHANNEL_FILTERS; i++)
            set(channel_filter_rows(i).type, FILTER_PEAKING_EQ);
        host.render(1024);
        host.note_on(0, 60);
        host.render(1024);
        if (change >= 0)
            set(number, change);
        return host.render(24576);
    }
};

TEST_F(HeldNote, KeepsWhatIsHeardFromTheNextNoteOnly) {
    const std::vector<float> plain = render(0, -1);
    for (const ControllerInfo& info : channel_controller_rows()) {
        const unsigned number = info.number;
        if (number == CTRL_PITCH_BEND_MSB || number == CTRL_PITCH_BEND_LSB)
            continue; // the engine takes both at once
        if (acts_from_next_note(number)) {
            for (const int byte : {int(info.choices.first), int(info.choices.last)})
                EXPECT_EQ(render(number, byte), plain) << info.key;
        } else if (std::string_view(info.name).find("parameter") == std::string_view::npos &&
                   number != CTRL_LPC_SELECT && number != CTRL_LPC_SPEED) {
            EXPECT_NE(render(number, info.choices.last), plain) << info.key;
        }
    }
}

} // namespace

} // namespace tarquil
