// The search for the best match with the places in lanes.

#include "softsynth/kernels/kernel_functions.h"
#include "softsynth/kernels/lanes/lanes.h"

namespace tarquil {

namespace KERNEL_NAMESPACE {
namespace {

// Vectors of places at a time, so that their sums need not wait for each other.
constexpr uint32_t VECTORS = 8;

// The correlations of N vectors of W places from `start` on.
template <int W, uint32_t N>
void correlate(const MatchSearch& search, uint32_t start, float* correlations) {
    Lanes<W> sums[N];
    for (uint32_t v = 0; v < N; v++)
        sums[v] = Lanes<W>::splat(0.0F);
    for (uint32_t j = 0; j < search.length; j++) {
        const auto sample = Lanes<W>::splat(search.stretch[j]);
        const float* sound = search.sound + start + j;
        for (uint32_t v = 0; v < N; v++)
            sums[v] += sample * Lanes<W>::load(sound + v * W);
    }
    for (uint32_t v = 0; v < N; v++)
        sums[v].store(correlations + v * W);
}

} // namespace

uint32_t best_match(const MatchSearch& search) {
    constexpr uint32_t PLACES = VECTORS * NATIVE_LANES;
    float correlations[PLACES];
    uint32_t best_start = search.first;
    float best = 0.0F;
    uint32_t start = search.first;
    const auto compare = [&](uint32_t count) {
        for (uint32_t i = 0; i < count; i++, start++) {
            if (start == search.first || correlations[i] > best) {
                best = correlations[i];
                best_start = start;
            }
        }
    };
    while (search.end - start >= PLACES) {
        correlate<NATIVE_LANES, VECTORS>(search, start, correlations);
        compare(PLACES);
    }
    while (search.end - start >= NATIVE_LANES) {
        correlate<NATIVE_LANES, 1>(search, start, correlations);
        compare(NATIVE_LANES);
    }
    while (start < search.end) {
        correlate<1, 1>(search, start, correlations);
        compare(1);
    }
    return best_start;
}

} // namespace KERNEL_NAMESPACE

} // namespace tarquil
