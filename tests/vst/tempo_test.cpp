// Tests of the tempo that VST 2 hosts tell when they are asked.

#include <gtest/gtest.h>

#include "instrument/settings.h"
#include "tests/support/bank_text.h"
#include "tests/vst/plugin_host.h"

namespace tarquil {

namespace {

VstTimeInfo now;
int32_t asked_for = 0;
bool answers = true;

intptr_t VST_CALL answer(AEffect*, int32_t opcode, int32_t, intptr_t value, void*, float) {
    if (opcode == audioMasterVersion)
        return kVstVersion;
    if (opcode != audioMasterGetTime)
        return 0;
    asked_for = int32_t(value);
    return answers ? reinterpret_cast<intptr_t>(&now) : 0;
}

// A note through a delay that may follow the tempo, in blocks whose host says `tempo`.
std::vector<float> sound(bool follows, double tempo, int32_t flags) {
    TarqSettings bank;
    bank.get_instrument(0).set_controller(CTRL_AUX2_LEVEL, 127);
    bank.set_tempo_sync(follows);
    asked_for = 0;
    now = {};
    now.tempo = tempo;
    now.flags = flags;
    PluginHost host(256, true, answer);
    EXPECT_TRUE(host.load(text_of(bank), false));
    host.midi(0x90, 60, 100);
    return host.render(44032);
}

TEST(VstTempo, TheHostIsAskedOnlyWhenTheBankFollows) {
    const std::vector<float> plain = sound(false, 197.25, kVstTempoValid);
    EXPECT_EQ(asked_for, 0);
    const std::vector<float> followed = sound(true, 197.25, kVstTempoValid);
    EXPECT_EQ(asked_for, kVstTempoValid | kVstPpqPosValid | kVstBarsValid | kVstTimeSigValid);
    EXPECT_NE(followed, plain);
    EXPECT_NE(followed, sound(true, 120.0, kVstTempoValid));
    // A host that does not say, or does not know.
    EXPECT_EQ(sound(true, 197.25, 0), sound(true, 120.0, kVstTempoValid));
    answers = false;
    EXPECT_EQ(sound(true, 197.25, kVstTempoValid), sound(true, 120.0, 0));
    answers = true;
}

} // namespace

} // namespace tarquil
