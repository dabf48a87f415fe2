// The sum of an oscillator group's copies, without the three operands of AVX.
//
// With those, some processors split an addition from memory in two, and a few copies are as fast
// without on all.

#include "softsynth/kernels/lanes/oscillator_sums.h"

namespace tarquil {

namespace KERNEL_NAMESPACE {
namespace {

// Samples that fit the registers.
constexpr unsigned WIDEST = 16;

// A copy alone needs no sums.
void render_single(const OscillatorCopies& copies, float* samples, const float* pitches,
                   uint32_t size) {
    const float* table = copies.table[0];
    const uint32_t shift = copies.table_shift;
    uint32_t phase = copies.phase[0];
    for (uint32_t t = 0; t < size; t += CONTROL_PERIOD) {
        const uint32_t length = size - t < CONTROL_PERIOD ? size - t : CONTROL_PERIOD;
        const uint32_t increment = phase_increment(pitches[t], copies.increment_scale[0]);
        const float* const end = samples + length;
        for (; end - samples >= int(PHASES); samples += PHASES) {
            for (unsigned k = 0; k < PHASES; k++)
                samples[k] = table[(phase + k * increment) >> shift];
            phase += PHASES * increment;
        }
        for (; samples < end; samples++) {
            *samples = table[phase >> shift];
            phase += increment;
        }
    }
    copies.phase[0] = phase;
}

} // namespace

void oscillator_copies(const OscillatorCopies& copies, float* samples, const float* pitches,
                       uint32_t size) {
    if (copies.count <= 1)
        render_single(copies, samples, pitches, size);
    else
        render_copies<WIDEST>(copies, samples, pitches, size);
}

} // namespace KERNEL_NAMESPACE

} // namespace tarquil
