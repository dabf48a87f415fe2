// The computer's keyboard as a piano of one octave and a half.

#include "editor/model/computer_keys.h"

#include <algorithm>
#include <string_view>

namespace tarquil {

namespace {

constexpr std::string_view KEYS = "awsedftgyhujkolp;";
constexpr unsigned VELOCITY = 100;
constexpr int SEMITONES_PER_OCTAVE = 12;
constexpr int HIGHEST_START = 108; // the last key plays note 124

} // namespace

bool ComputerKeys::press(uint32_t code, uint32_t character, unsigned channel) {
    if (down.contains(code))
        return true;
    if (character == 'z' || character == 'x') {
        octave_start = std::clamp(octave_start + (character == 'x' ? 1 : -1) * SEMITONES_PER_OCTAVE,
                                  0, HIGHEST_START);
        down.insert(code);
        return true;
    }
    if (character == 0 || character > '~')
        return false;
    const size_t place = KEYS.find(char(character));
    if (place == std::string_view::npos)
        return false;
    down.insert(code);
    notes.strike(code, channel, unsigned(octave_start) + unsigned(place), VELOCITY);
    return true;
}

void ComputerKeys::release(uint32_t code) {
    if (down.erase(code) > 0)
        notes.lift(code);
}

void ComputerKeys::release_all() {
    while (!down.empty())
        release(*down.begin());
}

char ComputerKeys::character_of(int note) const {
    const int place = note - octave_start;
    return place >= 0 && place < int(KEYS.size()) ? KEYS[size_t(place)] : char(0);
}

} // namespace tarquil
