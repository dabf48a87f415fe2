// The sum of many oscillator copies, with all instructions and registers of the level.

#include "softsynth/kernels/lanes/oscillator_sums.h"

namespace tarquil {

namespace KERNEL_NAMESPACE {

void many_oscillator_copies(const OscillatorCopies& copies, float* samples, const float* pitches,
                            uint32_t size) {
#if defined(__AVX512F__)
    constexpr unsigned WIDEST = 32;
#else
    constexpr unsigned WIDEST = 16;
#endif
    render_copies<WIDEST>(copies, samples, pitches, size);
}

} // namespace KERNEL_NAMESPACE

} // namespace tarquil
