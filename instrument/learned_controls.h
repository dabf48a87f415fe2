// Which controllers of a MIDI keyboard move which controls of a bank, as the user has taught it.

#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tarquil {

// What a MIDI controller moves, and between which bytes; reversed when `first` is the larger one.
struct LearnedControl {
    uint8_t target = 0; // a controller with a row, but not the pitch bend
    uint8_t first = 0;  // 0..127, at the MIDI controller's 0
    uint8_t last = 127; // at its 127

    // At the MIDI controller's value 0..127.
    [[nodiscard]] int value(unsigned data) const;

    bool operator==(const LearnedControl&) const = default;
};

inline constexpr unsigned NUM_MIDI_CONTROLLERS = 128;

// Bank numbers, data entry and its parameter numbers, and what ends sounds or changes modes stay
// what they are.
bool is_learnable(unsigned midi_controller);
// Every control but the pitch bend, which has a wheel of its own.
bool can_be_learned(unsigned target);

// The control with its whole range.
LearnedControl whole_range(unsigned target);

class LearnedControls {
  public:
    // Nothing for what is not learned; `midi_controller` 0..127.
    [[nodiscard]] const std::optional<LearnedControl>& get(unsigned midi_controller) const {
        return controls[midi_controller];
    }
    // Nothing when one of the two can not be learned.
    void set(unsigned midi_controller, const std::optional<LearnedControl>& control);

    // The MIDI controller takes this target, and no other one has it any longer.
    void learn(unsigned midi_controller, unsigned target);
    // The lowest MIDI controller that moves it.
    [[nodiscard]] std::optional<unsigned> find(unsigned target) const;

    bool operator==(const LearnedControls&) const = default;

  private:
    std::array<std::optional<LearnedControl>, NUM_MIDI_CONTROLLERS> controls;
};

// A line of a bank: "learn74 = filter1_cutoff 0 127".  Nothing for a key of another kind or a
// number that is not learnable, or for a value that means nothing.
std::string learn_key(unsigned midi_controller);
std::optional<unsigned> midi_controller_of_key(std::string_view key);
std::string learned_text(const LearnedControl& control);
std::optional<LearnedControl> parse_learned(std::string_view text);

} // namespace tarquil
