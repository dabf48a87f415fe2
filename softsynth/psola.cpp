// Shortens a stretch of sound by a whole factor without changing its pitch.

#include "softsynth/psola.h"

#include <algorithm>
#include <cstdlib>

#include "common/assertion.h"

namespace {

constexpr int OVERLAP = 128;
constexpr int MIN_GRAIN = 768;
constexpr int SEARCH = 256; // largest shift of a grain either way
constexpr int FADE = 32;    // at both ends of the result

// The place in [lo, hi) of `in` that matches the overlap at the end of the output best.
int find_best_match(const float* tail, const float* in, int lo, int hi) {
    int best_match_start = -1;
    float best = 0.0F;
    for (int s = lo; s < hi; s++) {
        float correlation = 0.0F;
        for (int j = 0; j < OVERLAP; j++)
            correlation += tail[j] * in[s + j];
        if (best_match_start == -1 || correlation > best) {
            best = correlation;
            best_match_start = s;
        }
    }
    TARQ_ASSERT(best_match_start != -1);
    return best_match_start;
}

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
        const float* match = in + find_best_match(tail, in, lo, hi);
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
