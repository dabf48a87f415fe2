// The search for the best match, place by place.

#include "softsynth/kernels/kernel_functions.h"

namespace tarquil {

uint32_t KERNEL_NAMESPACE::best_match(const MatchSearch& search) {
    uint32_t best_start = search.first;
    float best = 0.0F;
    for (uint32_t s = search.first; s < search.end; s++) {
        float correlation = 0.0F;
        for (uint32_t j = 0; j < search.length; j++)
            correlation += search.stretch[j] * search.sound[s + j];
        if (s == search.first || correlation > best) {
            best = correlation;
            best_start = s;
        }
    }
    return best_start;
}

} // namespace tarquil
