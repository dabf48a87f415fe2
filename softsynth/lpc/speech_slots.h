// The speech that instruments can name: 128 slots, numbered as the controller lpc_select numbers
// them.
//
// A slot is filled once and then only read, so a renderer may look into it at any time.

#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <string>

#include "softsynth/lpc/speech.h"

namespace tarquil {

class SpeechSlots {
  public:
    static constexpr size_t NUM_SLOTS = 128;

    SpeechSlots() = default;
    SpeechSlots(const SpeechSlots&) = delete;
    SpeechSlots& operator=(const SpeechSlots&) = delete;
    ~SpeechSlots();

    // Puts `speech` into an empty slot; false when it has some already.  From any thread but the
    // audio thread.
    bool put(size_t slot, Speech speech);

    // The same from a file: speech (.tlp), or a recording that common/wav.h reads, at 44100 Hz or
    // twice, four times, ... as much.  Why the slot stays as it was, in one line without the file's
    // name; empty when it is filled.
    std::string load(size_t slot, const std::string& path);

    // Null for an empty slot.  From any thread; stays valid as long as the slots.
    [[nodiscard]] const Speech* get(size_t slot) const;

  private:
    std::array<std::atomic<const Speech*>, NUM_SLOTS> slots{};
};

} // namespace tarquil
