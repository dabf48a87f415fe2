// Tests of notes by CLAP's own events, which end in all ways.

#include <gtest/gtest.h>

#include "tests/formats/clap/clap_host.h"
#include "tests/support/engine_host.h"

namespace tarquil {

namespace {

class HeldNotes : public testing::Test {
  protected:
    HeldNotes() {
        EXPECT_TRUE(host.activate());
        // Notes stop at once when they are released.
        for (int program = 0; program < 3; program++) {
            host.set(0x1010, program);
            host.set(CTRL_ENV1_SUSTAIN, 127);
            host.set(CTRL_ENV1_RELEASE, 0);
        }
        host.render(64);
    }

    // Which of the channels 0, 1 and 2 still sound: each is the only one that is not silent then.
    std::string sounding() {
        std::string found;
        for (int channel = 0; channel < 3; channel++) {
            for (int other = 0; other < 3; other++)
                host.midi(
                    {uint8_t(0xB0 + other), CTRL_MAIN_VOLUME, uint8_t(other == channel ? 127 : 0)});
            host.render(4096);
            if (peak(host.render(4096).left) > 1e-4F) // filters ring
                found += char('0' + channel);
        }
        return found;
    }
    void hold() {
        host.note(CLAP_EVENT_NOTE_ON, 60, 0, 0, 10);
        host.note(CLAP_EVENT_NOTE_ON, 64, 1, 0, 11);
        host.midi({0x92, 60, 100});
    }

    ClapTestHost host;
};

TEST_F(HeldNotes, EndByIdChannelAndKeyEachOfWhichMayBeLeftOpen) {
    struct Case {
        int key, channel, id;
        const char* left;
    };
    const Case cases[] = {
        {60, 0, 10, "12"},   {60, 0, -1, "12"},  {60, -1, -1, "1"},
        {-1, 1, -1, "02"},   {-1, -1, 11, "0"},  {-1, -1, -1, ""},
        {61, -1, -1, "012"}, {60, 0, 99, "012"}, {60, -1, 10, "1"},
    };
    for (const uint16_t type : {CLAP_EVENT_NOTE_OFF, CLAP_EVENT_NOTE_CHOKE}) {
        for (const Case& c : cases) {
            hold();
            host.note(type, c.key, c.channel, 0, c.id, 0.0, -1);
            EXPECT_EQ(sounding(), c.left)
                << type << ": key " << c.key << ", channel " << c.channel << ", id " << c.id;
            host.note(CLAP_EVENT_NOTE_OFF, -1, -1);
            ASSERT_EQ(sounding(), "");
        }
    }
}

TEST_F(HeldNotes, AKeyBelongsToItsLastNote) {
    host.note(CLAP_EVENT_NOTE_ON, 60, 0, 0, 1);
    host.note(CLAP_EVENT_NOTE_ON, 60, 0, 10, 2);
    host.note(CLAP_EVENT_NOTE_OFF, 60, 0, 20, 1);
    EXPECT_EQ(sounding(), "0") << "the note before it has ended";
    host.note(CLAP_EVENT_NOTE_OFF, 60, 0, 0, 2);
    EXPECT_EQ(sounding(), "");
}

TEST_F(HeldNotes, EventsThatAreNotForThisPluginDoNothing) {
    host.note(CLAP_EVENT_NOTE_ON, 60, 0, 0, -1, 1.0, 1); // another port
    host.note(CLAP_EVENT_NOTE_ON, 60, 16);
    host.note(CLAP_EVENT_NOTE_ON, 128, 0);
    host.note(CLAP_EVENT_NOTE_ON, -1, 0);
    host.note(CLAP_EVENT_NOTE_ON, 60, -1);
    host.note(CLAP_EVENT_NOTE_ON, 60, 0);
    host.last<clap_event_header>().space_id = 7;
    host.note(CLAP_EVENT_NOTE_ON, 60, 0);
    host.last<clap_event_header>().size = sizeof(clap_event_header);
    host.note(1000, 60, 0);
    host.midi({0x90, 60, 100});
    host.last<clap_event_midi>().port_index = 1;
    const uint8_t sysex[] = {0xF0, 0x7E, 0x7F, 9, 1, 0xF7};
    host.note(CLAP_EVENT_MIDI_SYSEX, 0);
    auto& message = host.last<clap_event_midi_sysex>();
    message = {message.header, 0, sysex, sizeof(sysex)};
    message.header.size = sizeof(message);
    EXPECT_EQ(sounding(), "");
    host.note(CLAP_EVENT_NOTE_ON, 60, 0, 0, -1, 0.0);
    EXPECT_EQ(sounding(), "0") << "no velocity is the least there is";
}

} // namespace

} // namespace tarquil
