// What MIDI controllers have been taught, where the audio thread and others read and change it at
// once, without locks.

#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <optional>

#include "instrument/learned_controls.h"

namespace tarquil {

// Each entry is an atomic of its own: a reader sees some control that was set, whole.
class LearnedTable {
  public:
    void set(const LearnedControls& learned);

    // `midi_controller` 0..127.
    [[nodiscard]] std::optional<LearnedControl> get(unsigned midi_controller) const;

    // While it listens, controllers that can be learned are heard and do nothing else.
    void listen(bool is_on);
    // The last one that was heard since the last call.
    std::optional<unsigned> take_heard();
    // One was moved.  True when it was heard.
    bool hears(unsigned midi_controller);

  private:
    // Target, first and last byte, and a bit that there is one.
    std::array<std::atomic<uint32_t>, NUM_MIDI_CONTROLLERS> entries{};
    static constexpr uint32_t IS_THERE = 1U << 24U;

    std::atomic<bool> is_listening{false};
    std::atomic<uint32_t> heard{NOTHING};
    static constexpr uint32_t NOTHING = UINT32_MAX;
};

} // namespace tarquil
