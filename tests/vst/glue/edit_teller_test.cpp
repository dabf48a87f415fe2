// Tests of the plug-in as its editor sees it, and of what the host is told.

#include "vst/edit_teller.h"

#include <gmock/gmock.h>

#include "editor/model/editor_model.h"
#include "frame/host_synth.h"
#include "tests/support/engine_host.h"
#include "vst/tarq_vst.h"

namespace tarquil {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> told; // to the host

intptr_t VST_CALL listen(AEffect*, int32_t opcode, int32_t index, intptr_t, void*, float value) {
    switch (opcode) {
    case audioMasterVersion:
        return kVstVersion;
    case audioMasterBeginEdit:
        told.push_back("begin " + std::to_string(index));
        break;
    case audioMasterAutomate:
        told.push_back(std::to_string(index) + " " + std::to_string(int(value * 127)));
        break;
    case audioMasterEndEdit:
        told.push_back("end " + std::to_string(index));
        break;
    case audioMasterUpdateDisplay:
        told.emplace_back("look");
        break;
    default:
        break;
    }
    return 0;
}

class EditTellerTest : public testing::Test {
  protected:
    EditTellerTest() {
        plugin.setBlockSize(256);
        plugin.resume();
        told.clear();
    }
    EditorState state() {
        EditorState read;
        synth.read_state(read);
        return read;
    }
    // As a host's batch of one.
    void midi(unsigned status, unsigned data1, unsigned data2) {
        VstMidiEvent event;
        event.midiData[0] = char(status);
        event.midiData[1] = char(data1);
        event.midiData[2] = char(data2);
        VstEvents batch;
        batch.numEvents = 1;
        batch.events[0] = reinterpret_cast<VstEvent*>(&event);
        plugin.processEvents(&batch);
    }
    void render(int32_t frames) {
        left.resize(size_t(frames));
        right.resize(size_t(frames));
        float* outputs[] = {left.data(), right.data()};
        plugin.processReplacing(nullptr, outputs, frames);
    }

    TarqVST plugin{listen};
    EditTeller teller{plugin};
    HostSynth synth{plugin.player(), teller};
    std::vector<float> left;
    std::vector<float> right;
};

TEST_F(EditTellerTest, AnEditReachesTheProgramAndTheHost) {
    synth.set_program(5);
    synth.begin_edit(CTRL_PANNING);
    synth.set_controller(CTRL_PANNING, 90);
    synth.end_edit(CTRL_PANNING);
    const std::string parameter = std::to_string(synth.host_parameter(CTRL_PANNING));
    for (const ControllerInfo& info : controller_rows())
        EXPECT_EQ(vst_param_to_controller(synth.host_parameter(info.number)), int(info.number));
    EXPECT_THAT(told,
                ElementsAre("look", "begin " + parameter, parameter + " 90", "end " + parameter));
    EXPECT_EQ(state().program, 5U);
    EXPECT_EQ(plugin.getProgram(), 5);
    EXPECT_EQ(state().bytes[CTRL_PANNING], 90);
    EXPECT_EQ(synth.get_instrument(5).get_controller(CTRL_PANNING), 90);
    EXPECT_EQ(synth.get_instrument(4).get_controller(CTRL_PANNING), 64);
}

TEST_F(EditTellerTest, ProgramsBanksAndSongsAreReplacedWhole) {
    Instrument instrument = synth.get_instrument(9);
    instrument.set_name("nine");
    synth.set_instrument(9, instrument);
    synth.set_channel_program(3, 9);
    synth.set_song("Title", "Author");
    EXPECT_EQ(state().names[9], "nine");
    EXPECT_EQ(state().names[3], "instrument_3");
    EXPECT_EQ(state().channel_programs[3], 9);
    EXPECT_EQ(state().channel_programs[9], 9);
    EXPECT_EQ(state().song_title, "Title");
    EXPECT_EQ(state().song_author, "Author");
    TarqSettings bank;
    synth.copy_bank(bank);
    EXPECT_EQ(bank.get_instrument(9).get_name(), "nine");
    bank.get_instrument(9).set_name("other");
    synth.set_bank(bank);
    EXPECT_EQ(state().names[9], "other");
    EXPECT_EQ(state().channel_programs[3], 9);
    EXPECT_THAT(told, ElementsAre("look", "look", "look"));
}

TEST_F(EditTellerTest, WhatIsChosenForAChannelIsTheHostsCurrentProgram) {
    EditorModel model(synth);
    model.select_channel(2);
    EXPECT_EQ(plugin.getProgram(), 2);
    model.choose_program(9);
    EXPECT_EQ(plugin.getProgram(), 9);
    EXPECT_EQ(plugin.get_current_instrument(2), 9);
    EXPECT_THAT(told, testing::Contains("look"));
    plugin.setProgram(70);
    model.refresh();
    EXPECT_FALSE(model.is_heard());
    EXPECT_EQ(plugin.get_current_instrument(2), 9);
}

TEST_F(EditTellerTest, MetersAreReadOnce) {
    plugin.player().meters().watched = true;
    synth.set_controller(CTRL_PANNING, 0);
    synth.set_controller(CTRL_AUX1_LEVEL, 0);
    midi(0x90, 60, 100);
    render(1024);
    const EditorMeters meters = synth.read_meters();
    EXPECT_GT(meters.peaks[0], 0.001F);
    EXPECT_EQ(meters.peaks[0], peak(left));
    EXPECT_EQ(meters.peaks[1], 0.0F);
    EXPECT_EQ(meters.voices, 1U);
    EXPECT_EQ(meters.active_channels, 1U);
    EXPECT_GT(meters.band_levels[1], 0.0F);
    const EditorMeters after = synth.read_meters();
    EXPECT_EQ(after.peaks[0], 0.0F);
    EXPECT_EQ(after.active_channels, 0U);
    EXPECT_EQ(after.band_levels, meters.band_levels);
    EXPECT_EQ(after.band_gains, meters.band_gains);
}

TEST_F(EditTellerTest, WhatALearnedControllerMovesIsToldByTheOpenWindowWithinAGesture) {
    LearnedControls learned;
    learned.learn(20, CTRL_PANNING);
    synth.set_learned(learned);
    plugin.player().meters().watched = true;
    told.clear();
    midi(0xB2, 20, 127);
    render(256);
    EXPECT_THAT(told, IsEmpty()) << "on the audio thread";
    const std::string parameter = std::to_string(synth.host_parameter(CTRL_PANNING));
    synth.pass_time(0.016);
    EXPECT_THAT(told, ElementsAre("begin " + parameter, parameter + " 127"));
    told.clear();
    synth.pass_time(0.4);
    midi(0xB2, 20, 0);
    synth.pass_time(0.4);
    synth.pass_time(0.4);
    EXPECT_THAT(told, ElementsAre(parameter + " 0"));
    synth.window_closed();
    synth.window_closed();
    EXPECT_THAT(told, ElementsAre(parameter + " 0", "end " + parameter));
}

} // namespace

} // namespace tarquil
