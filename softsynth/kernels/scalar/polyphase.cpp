// Frames between samples, one at a time.

#include "softsynth/kernels/kernel_functions.h"

namespace tarquil {

namespace KERNEL_NAMESPACE {
namespace {

constexpr uint32_t SUMS = Polyphase::SUMS;

float total(const float* s) {
    float q[4];
    for (int k = 0; k < 4; k++)
        q[k] = (s[k] + s[k + 4]) + (s[k + 8] + s[k + 12]);
    return (q[0] + q[1]) + (q[2] + q[3]);
}

} // namespace

void polyphase(const Polyphase& p, uint32_t num_frames) {
    uint32_t at = 0;
    uint32_t phase = p.phase;
    for (uint32_t i = 0; i < num_frames; i++) {
        const double place = double(phase) * p.rows_per_phase;
        const auto row = uint32_t(place);
        const auto fraction = float(place - double(row));
        const float* taps = p.rows + uint64_t(row) * p.num_taps;
        float left[SUMS] = {};
        float right[SUMS] = {};
        for (uint32_t j = 0; j < p.num_taps; j++) {
            float tap = taps[j];
            if (p.interpolated)
                tap = tap + fraction * (taps[j + p.num_taps] - tap);
            left[j % SUMS] += tap * p.left[at + j];
            right[j % SUMS] += tap * p.right[at + j];
        }
        p.out_left[i] = total(left);
        p.out_right[i] = total(right);
        at += p.whole_step;
        phase += p.rest_step;
        if (phase >= p.phases) {
            phase -= p.phases;
            at++;
        }
    }
}

} // namespace KERNEL_NAMESPACE

} // namespace tarquil
