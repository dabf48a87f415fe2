// Tests of what explores a sound: two versions, sections put back or left to chance, programs as
// text.

#include <gmock/gmock.h>

#include "editor/model/bank_synth.h"
#include "editor/model/section.h"
#include "editor/model/section_text.h"
#include "softsynth/parameters/families.h"

namespace tarquil {

namespace {

class ExploreTest : public testing::Test {
  protected:
    [[nodiscard]] int panning() {
        return synth.bank.get_instrument(0).get_controller(CTRL_PANNING);
    }

    BankSynth synth;
    EditorModel model{synth};
};

TEST_F(ExploreTest, TwoVersionsAreHeardInTurnAndUndone) {
    model.set_value(CTRL_PANNING, 10);
    model.compare();
    EXPECT_TRUE(model.is_version_b());
    EXPECT_EQ(panning(), 10) << "B starts as A";
    model.set_value(CTRL_PANNING, 20);
    model.compare();
    EXPECT_EQ(panning(), 10);
    model.compare();
    EXPECT_EQ(panning(), 20);
    model.rename_program(0, "mine");
    model.copy_to_other_version();
    model.compare();
    EXPECT_EQ(panning(), 20);
    EXPECT_FALSE(model.is_version_b());
    EXPECT_EQ(model.program_name(), "mine");
    model.undo(); // to B
    model.undo(); // A is as it was
    model.undo(); // the name
    EXPECT_TRUE(model.is_version_b());
    model.undo(); // to A
    EXPECT_FALSE(model.is_version_b());
    EXPECT_EQ(panning(), 10);
    model.redo();
    EXPECT_EQ(panning(), 20);
    model.select_program(1);
    EXPECT_FALSE(model.is_version_b()) << "each program has its own";
}

TEST_F(ExploreTest, ASectionIsPutBackInOneStep) {
    const OscillatorRows rows = oscillator_rows(1);
    const unsigned controllers[] = {rows.type, rows.coarse_tune};
    const ControllerBytes defaults = model.get_state().bytes;
    model.set_value(rows.coarse_tune, 3);
    model.set_value(rows.type, 5);
    model.set_value(CTRL_PANNING, 3);
    initialise_section(model, "Oscillator 2", controllers);
    EXPECT_EQ(model.value(rows.type), defaults[rows.type]);
    EXPECT_EQ(model.value(rows.coarse_tune), defaults[rows.coarse_tune]);
    EXPECT_EQ(model.value(CTRL_PANNING), 3);
    EXPECT_EQ(model.undo_name(), "Initialise Oscillator 2");
    model.undo();
    EXPECT_EQ(model.value(rows.coarse_tune), 3);
}

TEST_F(ExploreTest, ChanceKeepsToItsAmountAndNeverEndsTheSound) {
    const OscillatorRows rows = oscillator_rows(0);
    const unsigned controllers[] = {rows.type, rows.coarse_tune, CTRL_MAIN_VOLUME};
    std::minstd_rand chance(7);
    const ControllerBytes before = model.get_state().bytes;
    int moved = 0;
    for (int i = 0; i < 50; i++) {
        randomise_section(model, "Oscillator 1", controllers, 0.1, chance);
        EXPECT_NEAR(model.value(rows.coarse_tune), before[rows.coarse_tune], 13);
        moved += model.value(rows.coarse_tune) != before[rows.coarse_tune] ? 1 : 0;
        model.undo();
        EXPECT_EQ(model.get_state().bytes, before);
        randomise_section(model, "Oscillator 1", controllers, 1.0, chance);
        EXPECT_GT(model.value(rows.type), 0);
        EXPECT_EQ(model.value(CTRL_MAIN_VOLUME), before[CTRL_MAIN_VOLUME]);
        model.undo();
    }
    EXPECT_GT(moved, 30);
}

std::vector<unsigned> envelope(unsigned index) {
    const EnvelopeRows rows = envelope_rows(index);
    return {rows.attack, rows.decay, rows.sustain, rows.release};
}

std::vector<unsigned> mono_effect(unsigned index) {
    const EffectRows rows = mono_effect_rows(index);
    return {rows.type,         rows.parameter(0), rows.parameter(1),
            rows.parameter(2), rows.parameter(3), rows.parameter(4)};
}

TEST_F(ExploreTest, ASectionGoesThroughTextToItsLikeAnywhere) {
    for (unsigned i = 0; i < 4; i++)
        model.set_value(envelope(0)[i], int(30 + 11 * i));
    model.set_value(mono_effect(1)[0], 2);
    model.set_value(mono_effect(1)[5], 77);
    BankSynth other_synth;
    EditorModel other(other_synth);
    const std::string text = copied_section(model, "Envelope 1", envelope(0));
    EXPECT_EQ(paste_section(other, "Envelope 3", envelope(2), text), "");
    for (unsigned i = 0; i < 4; i++)
        EXPECT_EQ(other.value(envelope(2)[i]), int(30 + 11 * i));
    EXPECT_EQ(other.undo_name(), "Paste Envelope 3");
    other.undo();
    EXPECT_EQ(other.undo_name(), "") << "one step";
    EXPECT_EQ(paste_section(other, "Mono effect 1", mono_effect(0),
                            copied_section(model, "Mono effect 2", mono_effect(1))),
              "");
    EXPECT_EQ(other.value(mono_effect(0)[0]), 2);
    EXPECT_EQ(other.value(mono_effect(0)[5]), 77);
    EXPECT_EQ(paste_section(other, "Envelope 1", envelope(0), model.copied_text(0)), "")
        << "a whole program has it too";
    EXPECT_EQ(other.value(envelope(0)[1]), 41);
}

TEST_F(ExploreTest, ASectionDoesNotFitElsewhere) {
    const ControllerBytes before = model.get_state().bytes;
    const std::string text = copied_section(model, "Envelope 1", envelope(0));
    const LfoRows lfo = lfo_rows(0);
    const unsigned lfo_controllers[] = {lfo.type, lfo.speed, lfo.phase};
    const EffectRows stereo = STEREO_EFFECT_ROWS;
    const unsigned stereo_controllers[] = {
        stereo.type,         stereo.parameter(0), stereo.parameter(1), stereo.parameter(2),
        stereo.parameter(3), stereo.parameter(4), CTRL_CHANFX2_WET};
    const unsigned two_envelopes[] = {envelope(1)[0], envelope(2)[0]};
    EXPECT_EQ(paste_section(model, "LFO 1", lfo_controllers, text),
              "Envelope 1 of the clipboard does not fit into LFO 1");
    EXPECT_NE(paste_section(model, "Stereo effect", stereo_controllers,
                            copied_section(model, "Mono effect 1", mono_effect(0))),
              "");
    EXPECT_NE(paste_section(model, "Envelopes", two_envelopes, text), "");
    EXPECT_NE(paste_section(model, "LFO 1", lfo_controllers, "hello"), "");
    EXPECT_NE(paste_section(model, "LFO 1", lfo_controllers, ""), "");
    EXPECT_NE(model.paste_text(text, 0), "") << "and is no program with nothing else in it";
    EXPECT_EQ(model.get_state().bytes, before);
    EXPECT_EQ(model.undo_name(), "");
}

TEST_F(ExploreTest, AProgramGoesThroughTextAndNonsenseDoesNot) {
    model.set_value(CTRL_PANNING, 33);
    const std::string text = model.copied_text(0);
    BankSynth other_synth;
    EditorModel other(other_synth);
    EXPECT_EQ(other.paste_text(text, 5), "");
    EXPECT_EQ(other_synth.bank.get_instrument(5).get_controller(CTRL_PANNING), 33);
    EXPECT_NE(other.paste_text("hello", 5), "");
    EXPECT_NE(other.paste_text("", 5), "");
    EXPECT_EQ(other_synth.bank.get_instrument(5).get_controller(CTRL_PANNING), 33);
    other.undo();
    EXPECT_EQ(other.undo_name(), "");
}

} // namespace

} // namespace tarquil
