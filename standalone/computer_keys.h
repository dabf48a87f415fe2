// The computer's keyboard as a piano of one octave and a half.

#pragma once

#include <bitset>
#include <cstdint>
#include <optional>

namespace tarquil {

class Player;

// The rows of "a" and "w" are the white and the black keys from C on; "z" and "x" shift by octaves.
class ComputerKeys {
  public:
    explicit ComputerKeys(Player& played) : player(played) {}

    // `key` is a Unicode code point.  Keys that repeat play once.  The notes go to the channel that
    // plays the current program, channel 1 when none does.
    void press(uint32_t key, bool is_pressed);

  private:
    void send(unsigned kind, int note);
    [[nodiscard]] unsigned channel() const;

    Player& player;
    int octave_start = 60; // a MIDI note
    std::bitset<128> sounding;
};

} // namespace tarquil
