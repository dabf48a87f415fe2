// The biquad cascade on interleaved stereo, for the master section.

#include "softsynth/filters/stereo_filter.h"

#include <algorithm>
#include <bit>

#include "softsynth/signal/finite.h"

namespace tarquil {

void StereoFilter::init(FilterType new_type, int new_depth) {
    Filter::init(new_type, 0, new_depth, 0.0F);
    std::fill_n(left, MAX_DEPTH, State());
    std::fill_n(right, MAX_DEPTH, State());
}

void StereoFilter::render(float* buf, uint32_t n, float omega, float q, float gain) {
    if (type == FILTER_NONE || depth == 0)
        return;
    set_linear_cutoff(omega);
    set_resonance(q);
    set_dbgain_normalized(gain);
    update();
    if (all_zero(buf, 2 * n) && is_at_rest())
        return;
    run(buf, n);
    if (!all_finite(&left[0].z1, 2 * MAX_DEPTH) || !all_finite(&right[0].z1, 2 * MAX_DEPTH)) {
        std::fill_n(left, MAX_DEPTH, State());
        std::fill_n(right, MAX_DEPTH, State());
    }
}

void StereoFilter::run(float* buf, uint32_t n) {
    for (unsigned k = 0; k < depth; k++) {
        State l = left[k];
        State r = right[k];
        for (uint32_t i = 0; i < n; i++) {
            const float xl = buf[2 * i];
            const float xr = buf[2 * i + 1];
            const float yl = b0 * xl + l.z1;
            const float yr = b0 * xr + r.z1;
            l.z1 = b1 * xl - a1 * yl + l.z2;
            r.z1 = b1 * xr - a1 * yr + r.z2;
            l.z2 = b2 * xl - a2 * yl;
            r.z2 = b2 * xr - a2 * yr;
            buf[2 * i] = yl;
            buf[2 * i + 1] = yr;
        }
        left[k] = l;
        right[k] = r;
    }
}

bool StereoFilter::is_at_rest() {
    State before[2][MAX_DEPTH];
    std::copy_n(left, MAX_DEPTH, before[0]);
    std::copy_n(right, MAX_DEPTH, before[1]);
    float frame[2] = {};
    run(frame, 1);
    const auto same_bits = [](State a, State b) {
        return std::bit_cast<uint64_t>(a) == std::bit_cast<uint64_t>(b);
    };
    const bool unchanged = std::equal(before[0], before[0] + MAX_DEPTH, left, same_bits) &&
                           std::equal(before[1], before[1] + MAX_DEPTH, right, same_bits);
    std::copy_n(before[0], MAX_DEPTH, left);
    std::copy_n(before[1], MAX_DEPTH, right);
    return unchanged && all_zero(frame, 2);
}

} // namespace tarquil
