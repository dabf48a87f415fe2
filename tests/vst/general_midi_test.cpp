// General MIDI in the plug-in: off at first, kept in the state, with drums, at any block length.

#include <gtest/gtest.h>

#include "instrument/settings.h"
#include "tests/support/engine_host.h"
#include "tests/vst/plugin_host.h"

namespace tarquil {

namespace {

std::vector<float> play(bool general_midi, int32_t block) {
    PluginHost host(block);
    EXPECT_EQ(host.save(false).find("midi = gm"), std::string::npos);
    if (general_midi) {
        TarqSettings bank;
        bank.set_midi_dialect(MidiDialect::GENERAL_MIDI);
        std::string text;
        EXPECT_EQ(bank.text_save_to_string(text), 0);
        EXPECT_TRUE(host.load(text, false));
        EXPECT_NE(host.save(false).find("midi = gm"), std::string::npos);
    }
    host.midi(0xB9, 7, 100); // natively a controller of no meaning for the level
    host.midi(0x99, 36, 100);
    return host.render(64 * 64, block);
}

TEST(GeneralMidiPlugin, PlaysDrumsWhenTheStateSaysSo) {
    const std::vector<float> drum = play(true, 64);
    EXPECT_GT(peak(drum), 0.01F);
    EXPECT_EQ(play(true, 64), drum);
    EXPECT_EQ(play(true, 256), drum) << "runs of 64 frames whatever the block";
    EXPECT_NE(play(false, 64), drum);
}

} // namespace

} // namespace tarquil
