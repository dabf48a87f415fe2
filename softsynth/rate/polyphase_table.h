// The taps of the rate converter: a low-pass filter, sampled at every place between two samples
// that a ratio of rates needs.
//
//   h(t) = 2 c sinc(2 c t) kaiser(t / H, 14),   |t| <= H engine frames
//
// (J. F. Kaiser, "Nonrecursive digital filter design using the I0-sinh window function", 1974.) The
// window's transition is 2 * 2.225 / H cycles per frame wide and what lies behind it 135 dB down.
//
// Up to higher rates H is 48 and c half a cycle per frame: the transition lies from 20.0 to 24.1
// kHz with its centre at 22,050 Hz.  The images of what the engine plays above 20 kHz fall between
// 22,050 Hz and 24.1 kHz and are not heard, which makes the filter half as long as one that removes
// them.  Down to lower rates H grows as the rate falls, and c is as large as lets nothing that is
// audible fold: it folds to above 20 kHz, or not at all.

#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "softsynth/kernels/polyphase.h"
#include "softsynth/rate/rate_ratio.h"

namespace tarquil {

// H of a ratio; 0 at the engine's own rate, which needs no filter.
uint32_t filter_reach(const RateRatio& ratio);

struct PolyphaseTable {
    explicit PolyphaseTable(const RateRatio& rates);

    [[nodiscard]] const float* rows() const { return taps.front().tap; }

    RateRatio ratio;
    uint32_t half_taps; // H
    uint32_t num_taps;  // of a row; tap k weighs the sample H - 1 - k frames before the place

    // One row per phase of the ratio while these take no more than half a megabyte, else as many
    // as that holds, and one more, to interpolate between: what that adds is 139 dB down.
    bool interpolated;
    double rows_per_phase;

  private:
    struct alignas(64) Group {
        float tap[Polyphase::SUMS];
    };
    std::vector<Group> taps;
};

// The table of a ratio, one for all who hold it at a time.  Allocates and may wait: not for the
// audio thread.
std::shared_ptr<const PolyphaseTable> shared_polyphase_table(const RateRatio& ratio);

} // namespace tarquil
