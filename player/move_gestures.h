// Moves of controls that no window makes, as hosts are told of edits: each control's within a
// gesture, which ends when it has rested.

#pragma once

#include <array>
#include <bitset>

#include "player/moved_controls.h"

namespace tarquil {

// For one thread at a time.  `told` has begin_edit(number), edited(number) and end_edit(number),
// each false when the host takes it later only: the next call goes on there.
class MoveGestures {
  public:
    static constexpr double REST_SECONDS = 0.5;

    // What is to be told from now on.
    void take(MovedControls& moved) {
        moved.take([this](unsigned number) { waiting.set(number); });
    }

    // `seconds` since the last call.
    template <typename Told> void tell(double seconds, Told&& told) {
        for (unsigned number = 0; (waiting | open).any() && number < open.size(); number++) {
            if (waiting.test(number) ? !tell_move(number, told) : !pass(number, seconds, told))
                return;
        }
    }

    // Every gesture ends.
    template <typename Told> void end(Told&& told) { tell(REST_SECONDS, told); }

  private:
    template <typename Told> bool tell_move(unsigned number, Told& told) {
        if (!open.test(number) && !told.begin_edit(number))
            return false;
        open.set(number);
        if (!told.edited(number))
            return false;
        waiting.reset(number);
        rested[number] = 0;
        return true;
    }

    template <typename Told> bool pass(unsigned number, double seconds, Told& told) {
        if (!open.test(number))
            return true;
        rested[number] += seconds;
        if (rested[number] >= REST_SECONDS) {
            if (!told.end_edit(number))
                return false;
            open.reset(number);
        }
        return true;
    }

    std::bitset<NUM_CONTROLLERS> waiting; // moved, and not told
    std::bitset<NUM_CONTROLLERS> open;    // its gesture has begun
    std::array<double, NUM_CONTROLLERS> rested{};
};

} // namespace tarquil
