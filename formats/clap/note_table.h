// Which notes are held, by whom: CLAP ends notes by their id, channel and key, any of which may be
// left open.

#pragma once

#include <array>
#include <cstdint>

#include "softsynth/parameters/constants.h"

namespace tarquil {

class NoteTable {
  public:
    // That a note has no id, or that an event means every id, channel or key.
    static constexpr int32_t ANY = -1;

    void begin(unsigned channel, unsigned key, int32_t id = ANY) { ids[channel][key] = id; }
    void end(unsigned channel, unsigned key) { ids[channel][key] = NOT_HELD; }
    void clear() { *this = NoteTable(); }

    // Ends each note that is meant, and calls end_note(channel, key) for it.  A key that is named
    // is meant even if nothing is known to hold it, unless a later note with another id does.
    template <typename EndNote>
    void end_each(int32_t id, int32_t channel, int32_t key, const EndNote& end_note) {
        const bool is_named = channel != ANY && key != ANY;
        for (unsigned c = first(channel); c <= last(channel, NUM_CHANNELS); c++) {
            for (unsigned k = first(key); k <= last(key, NUM_KEYS); k++) {
                const int32_t held = ids[c][k];
                const bool is_other = id != ANY && held >= 0 && held != id;
                if (is_other || (!is_named && held == NOT_HELD))
                    continue;
                end(c, k);
                end_note(c, k);
            }
        }
    }

  private:
    static constexpr int32_t NOT_HELD = INT32_MIN;
    static constexpr int32_t NUM_KEYS = 128;
    using Keys = std::array<int32_t, NUM_KEYS>;

    static unsigned first(int32_t named) { return named == ANY ? 0U : unsigned(named); }
    static unsigned last(int32_t named, int32_t count) {
        return unsigned(named == ANY ? count - 1 : named);
    }

    static constexpr std::array<Keys, NUM_CHANNELS> none_held() {
        std::array<Keys, NUM_CHANNELS> none{};
        for (Keys& keys : none)
            keys.fill(NOT_HELD);
        return none;
    }

    std::array<Keys, NUM_CHANNELS> ids = none_held();
};

} // namespace tarquil
