// The computer's keyboard as a piano of one octave and a half.

#include "standalone/computer_keys.h"

#include <algorithm>
#include <string_view>

#include "player/player.h"
#include "softsynth/parameters/midi_event.h"

namespace tarquil {

namespace {

constexpr std::string_view KEYS = "awsedftgyhujkolp;";
constexpr uint8_t VELOCITY = 100;
constexpr int SEMITONES_PER_OCTAVE = 12;
constexpr int HIGHEST_START = 108;

} // namespace

void ComputerKeys::press(uint32_t key, bool is_pressed) {
    if (key == 'z' || key == 'x') {
        if (is_pressed)
            octave_start = std::clamp(octave_start + (key == 'x' ? 1 : -1) * SEMITONES_PER_OCTAVE,
                                      0, HIGHEST_START);
        return;
    }
    if (key == 0 || key > '~')
        return;
    const size_t place = KEYS.find(char(key));
    if (place == std::string_view::npos)
        return;
    const int note = octave_start + int(place);
    if (note > 127 || sounding[size_t(note)] == is_pressed)
        return;
    sounding[size_t(note)] = is_pressed;
    send(is_pressed ? MIDI_NOTE_ON : MIDI_NOTE_OFF, note);
}

void ComputerKeys::send(unsigned kind, int note) {
    player.play_message({midi_status(kind, channel()), uint8_t(note), VELOCITY});
}

unsigned ComputerKeys::channel() const {
    for (unsigned channel = 0; channel < unsigned(NUM_CHANNELS); channel++) {
        if (player.channel_program(channel) == player.edited_program())
            return channel;
    }
    return 0;
}

} // namespace tarquil
