// Frames between samples with the partial sums in lanes.

#include "softsynth/kernels/kernel_functions.h"
#include "softsynth/kernels/lanes/lanes.h"

namespace tarquil {

namespace KERNEL_NAMESPACE {
namespace {

using Native = Lanes<NATIVE_LANES>;

constexpr uint32_t SUMS = Polyphase::SUMS;
constexpr uint32_t VECTORS = SUMS / NATIVE_LANES;

// The partial sums in fours.
Lanes<4> quad(const Native (&sums)[VECTORS]) {
    float s[SUMS];
    for (uint32_t v = 0; v < VECTORS; v++)
        sums[v].store(s + v * NATIVE_LANES);
    return (Lanes<4>::load(s) + Lanes<4>::load(s + 4)) +
           (Lanes<4>::load(s + 8) + Lanes<4>::load(s + 12));
}

template <bool INTERPOLATED>
void frame(const Polyphase& p, uint32_t at, uint32_t phase, float* out_left, float* out_right) {
    const double place = double(phase) * p.rows_per_phase;
    const auto row = INTERPOLATED ? uint32_t(place) : phase;
    const auto fraction = Native::splat(float(place - double(row)));
    const float* taps = p.rows + uint64_t(row) * p.num_taps;
    const float* in_left = p.left + at;
    const float* in_right = p.right + at;
    Native left[VECTORS];
    Native right[VECTORS];
    for (uint32_t v = 0; v < VECTORS; v++)
        left[v] = right[v] = Native::splat(0.0F);
    for (uint32_t j = 0; j < p.num_taps; j += SUMS) {
        for (uint32_t v = 0; v < VECTORS; v++) {
            const uint32_t first = j + v * NATIVE_LANES;
            Native tap = Native::load(taps + first);
            if constexpr (INTERPOLATED)
                tap = tap + fraction * (Native::load(taps + first + p.num_taps) - tap);
            left[v] += tap * Native::load(in_left + first);
            right[v] += tap * Native::load(in_right + first);
        }
    }
    const Lanes<4> left_quad = quad(left);
    const Lanes<4> right_quad = quad(right);
    const Lanes<4> pairs = evens(left_quad, right_quad) + odds(left_quad, right_quad);
    float sums[4];
    (evens(pairs, pairs) + odds(pairs, pairs)).store(sums);
    *out_left = sums[0];
    *out_right = sums[1];
}

template <bool INTERPOLATED> void frames(const Polyphase& p, uint32_t num_frames) {
    uint32_t at = 0;
    uint32_t phase = p.phase;
    for (uint32_t i = 0; i < num_frames; i++) {
        frame<INTERPOLATED>(p, at, phase, p.out_left + i, p.out_right + i);
        at += p.whole_step;
        phase += p.rest_step;
        if (phase >= p.phases) {
            phase -= p.phases;
            at++;
        }
    }
}

} // namespace

void polyphase(const Polyphase& p, uint32_t num_frames) {
    if (p.interpolated)
        frames<true>(p, num_frames);
    else
        frames<false>(p, num_frames);
}

} // namespace KERNEL_NAMESPACE

} // namespace tarquil
