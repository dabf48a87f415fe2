// Shortens a stretch of sound by a whole factor without changing its pitch.

#include "softsynth/effects/psola.h"

#include <algorithm>
#include <cstdlib>

#include "common/assertion.h"
#include "softsynth/kernels/kernels.h"

namespace tarquil {

namespace {

constexpr int OVERLAP = 128;
constexpr int MIN_GRAIN = 768;
constexpr int SEARCH = 256; // largest shift of a grain either way
constexpr int FADE = 32;    // at both ends of the result

void fade_ends(float* out, int length) {
    for (int j = 0; j < std::min(FADE, length); j++) {
        const float weight = float(j + 1) / float(FADE + 2);
        out[j] *= weight;
        out[length - 1 - j] *= weight;
    }
}

int shorten(const float* in, int n, int factor, float* out) {
    const int target = n / factor;
    const int grains = std::max((target + MIN_GRAIN - 1) / (MIN_GRAIN + OVERLAP), 1);
    const int grain = std::max(MIN_GRAIN, (target - OVERLAP) / grains);
    const int length = std::min(grain + OVERLAP, n);
    std::copy_n(in, length, out);
    int out_len = length;
    for (int k = 1; k < grains; k++) {
        const int centre = int(int64_t(k) * n / grains) - length / 2;
        const int lo = std::max(0, centre - SEARCH);
        const int hi = std::min(n - length, centre + SEARCH);
        float* tail = out + (out_len - OVERLAP);
        TARQ_ASSERT(lo < hi);
        const float* match =
            in + kernels().best_match({tail, OVERLAP, in, uint32_t(lo), uint32_t(hi)});
        for (int j = 0; j < OVERLAP; j++) {
            const float weight = float(j + 1) / float(OVERLAP + 2);
            tail[j] += (match[j] - tail[j]) * weight;
        }
        std::copy_n(match + OVERLAP, grain, tail + OVERLAP);
        out_len += grain;
    }
    fade_ends(out, out_len);
    return out_len;
}

} // namespace

void psola_time_stretch(const float* in, uint32_t n, int speedup, float* out, uint32_t* out_len) {
    const int factor = std::max(std::abs(speedup), 1);
    if (factor == 1) {
        std::copy_n(in, n, out);
        *out_len = n;
    } else {
        *out_len = uint32_t(shorten(in, int(n), factor, out));
    }
    if (speedup < 0)
        std::reverse(out, out + *out_len);
}

} // namespace tarquil
