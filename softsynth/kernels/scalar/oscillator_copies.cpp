// The sum of an oscillator group's copies, copy by copy.

#include "softsynth/kernels/kernel_functions.h"
#include "softsynth/kernels/phase_increment.h"
#include "softsynth/parameters/constants.h"

namespace tarquil {

void KERNEL_NAMESPACE::oscillator_copies(const OscillatorCopies& copies, float* samples,
                                         const float* pitches, uint32_t size) {
    for (uint32_t t = 0; t < size; t += CONTROL_PERIOD) {
        const uint32_t end = t + CONTROL_PERIOD < size ? t + CONTROL_PERIOD : size;
        for (uint32_t copy = 0; copy < copies.count; copy++) {
            const uint32_t increment = phase_increment(pitches[t], copies.increment_scale[copy]);
            const float* table = copies.table[copy];
            uint32_t phase = copies.phase[copy];
            for (uint32_t i = t; i < end; i++) {
                const float sample = table[phase >> copies.table_shift];
                samples[i] = copy == 0 ? sample : samples[i] + sample;
                phase += increment;
            }
            copies.phase[copy] = phase;
        }
    }
}

void KERNEL_NAMESPACE::many_oscillator_copies(const OscillatorCopies& copies, float* samples,
                                              const float* pitches, uint32_t size) {
    oscillator_copies(copies, samples, pitches, size);
}

} // namespace tarquil
