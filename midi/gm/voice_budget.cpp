// How many of an engine's voices are in use.

#include "midi/gm/voice_budget.h"

#include <algorithm>

namespace tarquil {

void VoiceBudget::release_note(uint32_t time, uint32_t end) {
    held--;
    drop_ended(time);
    if (num_tails < MAX_TAILS)
        tail_ends[num_tails++] = end;
}

unsigned VoiceBudget::count(uint32_t time) {
    drop_ended(time);
    return held + num_tails;
}

void VoiceBudget::move_clock_back(uint32_t frames) {
    for (uint32_t& end : tail_ends)
        end -= frames;
}

void VoiceBudget::drop_ended(uint32_t time) {
    const auto last = std::remove_if(tail_ends.begin(), tail_ends.begin() + num_tails,
                                     [time](uint32_t end) { return !is_before(time, end); });
    num_tails = unsigned(last - tail_ends.begin());
}

} // namespace tarquil
