// The built module as hosts see it: the C interface and its states.

#include <cmath>
#include <set>

#include <gtest/gtest.h>

#include "tests/support/engine_host.h"
#include "tests/vst/plugin_host.h"

namespace tarquil {

namespace {

constexpr int32_t NUM_PARAMS = 173;
constexpr int32_t FIRST_PITCH_BEND_PARAM = 110;

bool is_settable(int32_t index) {
    return index != 0 && index != FIRST_PITCH_BEND_PARAM && index != FIRST_PITCH_BEND_PARAM + 1;
}

TEST(Plugin, TellsHostsWhatItIs) {
    PluginHost host(64);
    EXPECT_EQ(host.text(effGetEffectName), "Tarquil");
    EXPECT_EQ(host.call(effGetPlugCategory), kPlugCategSynth);
    EXPECT_EQ(host.effect->numPrograms, 128);
    EXPECT_EQ(host.effect->numParams, NUM_PARAMS);
    EXPECT_EQ(host.effect->numInputs, 0);
    EXPECT_EQ(host.effect->numOutputs, 2);
    EXPECT_EQ(host.effect->initialDelay, 0);
    EXPECT_EQ(host.effect->flags & ~effFlagsHasEditor,
              effFlagsCanReplacing | effFlagsProgramChunks | effFlagsIsSynth);
    EXPECT_EQ(host.effect->uniqueID, 0x54714C78);
    char ability[] = "receiveVstMidiEvent";
    EXPECT_EQ(host.call(effCanDo, 0, 0, ability), 1);
    ability[0] = 'x';
    EXPECT_EQ(host.call(effCanDo, 0, 0, ability), -1);
    EXPECT_EQ(host.call(effCanDo, 0, 0, nullptr), 0);

    struct {
        VstPinProperties pin;
        char guard = 'g';
    } side;
    for (const int32_t index : {0, 1}) {
        EXPECT_EQ(host.call(effGetOutputProperties, index, 0, &side), 1);
        EXPECT_STREQ(side.pin.label, index == 0 ? "Tarquil 1" : "Tarquil 2");
        EXPECT_EQ(side.pin.flags, kVstPinIsActive | kVstPinIsStereo);
    }
    EXPECT_EQ(side.guard, 'g');
    for (const int32_t index : {-1, 2})
        EXPECT_EQ(host.call(effGetOutputProperties, index, 0, &side), 0);
    EXPECT_EQ(host.call(effGetInputProperties, 0, 0, &side), 0);
}

TEST(Plugin, AnswersWhatHostsAsk) {
    PluginHost host(64);
    EXPECT_EQ(host.call(effString2Parameter, 1, 0, nullptr), 1) << "it can";
    char nonsense[] = " loud";
    EXPECT_EQ(host.call(effString2Parameter, 1, 0, nonsense), 0);
    EXPECT_EQ(host.call(effProcessEvents, 0, 0, nullptr), 0);
    std::set<std::string> names;
    for (int32_t i = 0; i < NUM_PARAMS; i++) {
        names.insert(host.text(effGetParamName, i));
        EXPECT_EQ(host.call(effCanBeAutomated, i), is_settable(i) ? 1 : 0);
    }
    EXPECT_EQ(int32_t(names.size()), NUM_PARAMS);
    EXPECT_EQ(host.text(effGetParamDisplay, 0), "(none)");
    EXPECT_EQ(host.text(effGetParamLabel, 5), " none   ");
    for (const int32_t opcode : {effGetParamName, effGetParamDisplay, effGetParamLabel}) {
        EXPECT_EQ(host.text(opcode, -1), "");
        EXPECT_EQ(host.text(opcode, NUM_PARAMS), "");
        EXPECT_NE(host.text(opcode, NUM_PARAMS - 2), "");
    }
    for (const int32_t program : {-1, 128}) {
        EXPECT_EQ(host.text(effGetProgramNameIndexed, program), "");
        EXPECT_EQ(host.call(effCopyProgram, program), 0);
    }
    char state[] = "name = x\n";
    EXPECT_EQ(host.call(effSetChunk, 1, 0, state), 0);
    EXPECT_EQ(host.call(effSetChunk, 1, -1, state), 0);
    EXPECT_EQ(host.call(effSetChunk, 1, sizeof(state), nullptr), 0);
    EXPECT_EQ(host.text(effGetProgramName), "instrument_0");
    for (int i = 0; i < 17000; i++)
        host.midi(0xB0, 7, 64, 100000);
    EXPECT_EQ(host.send_events(), 0) << "more than there is room for";
}

TEST(Plugin, AddsToWhatIsThereAndLeavesNothingWithoutOutputs) {
    PluginHost replacing(64);
    PluginHost adding(64);
    for (PluginHost* host : {&replacing, &adding}) {
        host->midi(0x90, 60, 100);
        host->send_events();
    }
    const std::vector<float> sound = replacing.block(64);
    std::vector<float> sum(128, 2.0F);
    float* outputs[] = {sum.data(), sum.data() + 64};
    float* one[] = {sum.data(), nullptr};
    for (const auto render : {adding.effect->process, adding.effect->processReplacing}) {
        render(adding.effect, nullptr, nullptr, 64);
        render(adding.effect, nullptr, one, 64);
        render(adding.effect, nullptr, outputs, 0);
        render(adding.effect, nullptr, outputs, -64);
    }
    EXPECT_EQ(sum, std::vector<float>(128, 2.0F));
    adding.effect->process(adding.effect, nullptr, outputs, 64);
    EXPECT_GT(peak(sound), 0.0F);
    for (size_t i = 0; i < 128; i++)
        EXPECT_EQ(sum[i], 2.0F + sound[i]);
    PluginHost without_size(64, false);
    without_size.call(effMainsChanged, 0, 1);
    without_size.midi(0x90, 60, 100);
    without_size.send_events();
    std::fill(sum.begin(), sum.end(), 3.0F);
    without_size.effect->process(without_size.effect, nullptr, outputs, 64);
    EXPECT_EQ(sum, std::vector<float>(128, 3.0F));
    without_size.effect->processReplacing(without_size.effect, nullptr, outputs, 64);
    EXPECT_EQ(sum, std::vector<float>(128, 0.0F));
}

TEST(Plugin, SurvivesEveryOpcodeWithNonsense) {
    PluginHost host(64, false);
    const std::string before = host.save(false);
    for (int32_t opcode = -2; opcode < 100; opcode++) {
        if (opcode == effClose || opcode == effEditOpen)
            continue;
        for (const int32_t index : {-1, 173, 128, INT32_MAX, INT32_MIN})
            host.call(opcode, index, -1, nullptr, NAN);
    }
    for (const int32_t index : {-1, 173, INT32_MAX}) {
        host.set(index, 1.0F);
        EXPECT_EQ(host.get(index), 0.0F);
    }
    host.set(1, NAN);
    EXPECT_EQ(host.save(false), before);
    host.set(1, INFINITY);
    EXPECT_EQ(host.get(1), 1.0F);
    host.set(1, -3.0F);
    EXPECT_EQ(host.get(1), 0.0F);
}

TEST(Plugin, ProgramsAreTheBanksInstruments) {
    PluginHost host;
    EXPECT_EQ(host.text(effGetProgramName), "instrument_0");
    EXPECT_EQ(host.text(effGetProgramNameIndexed, 127), "instrument_127");
    host.call(effSetProgram, 0, 3);
    host.set(1, 0.25F);
    char name[] = "a name that is much longer than any host's field";
    host.call(effSetProgramName, 0, 0, name);
    EXPECT_EQ(host.text(effGetProgramName), "a_name_that_is_much_lon");
    // The cut would go through the last character.
    char accented[] = "a_name_that_is_much_lo\xC3\xA9";
    host.call(effSetProgramName, 0, 0, accented);
    EXPECT_EQ(host.text(effGetProgramName), "a_name_that_is_much_lo");
    host.call(effSetProgramName, 0, 0, name);
    EXPECT_EQ(host.call(effCopyProgram, 9), 1);
    host.call(effSetProgram, 0, 128);
    EXPECT_EQ(host.call(effGetProgram), 3);
    host.call(effSetProgram, 0, 9);
    EXPECT_EQ(host.text(effGetProgramName), "a_name_that_is_much_lon");
    EXPECT_EQ(host.get(1), 31 / 127.0F);
}

TEST(Plugin, PlaysAnImageOfABank) {
    PluginHost host;
    host.set(1, 0.2F);
    const std::string bank = host.save(false);
    PluginHost loaded;
    std::string header = "default.tqb";
    header.resize(256, '\0');
    std::string image = "MVFSMFIL" + header;
    for (int shift = 24; shift >= 0; shift -= 8)
        image.push_back(char(bank.size() >> shift));
    EXPECT_TRUE(loaded.load(image + bank, false));
    EXPECT_EQ(loaded.save(false), bank);
    EXPECT_FALSE(loaded.load("MFIL" + header, false));
    EXPECT_FALSE(loaded.load(image + bank.substr(1), false)) << "it is shorter than it says";
    EXPECT_EQ(loaded.save(false), bank);
    // Hosts pad what they keep.
    PluginHost padded;
    EXPECT_TRUE(padded.load(image + bank + std::string(300, '\0'), false));
    EXPECT_EQ(padded.save(false), bank);
}

} // namespace

} // namespace tarquil
