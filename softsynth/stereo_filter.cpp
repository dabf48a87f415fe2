// The biquad cascade on interleaved stereo, for the master section.

#include "softsynth/stereo_filter.h"

#include <algorithm>
#include <cmath>

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
    bool finite = true;
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
        finite = finite && std::isfinite(l.z1) && std::isfinite(l.z2) && std::isfinite(r.z1) &&
                 std::isfinite(r.z2);
    }
    if (!finite) {
        std::fill_n(left, MAX_DEPTH, State());
        std::fill_n(right, MAX_DEPTH, State());
    }
}
