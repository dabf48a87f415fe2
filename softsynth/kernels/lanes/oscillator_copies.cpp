// The sum of an oscillator group's copies with the samples in registers.
//
// Random table places leave two scalar loads a cycle as the limit, and gathers are slower.  What
// this form saves are the loads and stores of the sums and the wait for the phase's addition: four
// phases a copy advance by four samples at a time.  Neighbouring copies mostly share a table; one
// run of them at a time over the whole block keeps that table in the nearest cache.

#include "softsynth/constants.h"
#include "softsynth/kernels/kernel_functions.h"
#include "softsynth/kernels/phase_increment.h"

namespace KERNEL_NAMESPACE {
namespace {

constexpr unsigned PHASES = 4;

// Samples that fit the registers of an instruction set.
#if defined(__AVX512F__)
constexpr unsigned WIDEST = 32;
#else
constexpr unsigned WIDEST = 16;
#endif

// Below this many copies a run, walking by runs costs more than the cache saves.
constexpr uint32_t SHORT_RUN = 8;

// The shift of tables of 4096 samples, which all waveforms but the noise have.
constexpr uint32_t WAVE_SHIFT = 20;

// Adds N samples of one copy to the sums, or starts them.  SHIFT 0: the copies' own.
template <unsigned N, uint32_t SHIFT, bool START>
inline void add_copy(const OscillatorCopies& copies, uint32_t copy, float pitch, float* sums) {
    constexpr unsigned CHAINS = N < PHASES ? 1 : PHASES;
    const uint32_t shift = SHIFT == 0 ? copies.table_shift : SHIFT;
    const uint32_t increment = phase_increment(pitch, copies.increment_scale[copy]);
    const float* table = copies.table[copy];
    uint32_t phase[CHAINS];
    for (unsigned k = 0; k < CHAINS; k++)
        phase[k] = copies.phase[copy] + k * increment;
    for (unsigned i = 0; i < N; i += CHAINS) {
        for (unsigned k = 0; k < CHAINS; k++) {
            const float sample = table[phase[k] >> shift];
            sums[i + k] = START ? sample : sums[i + k] + sample;
            phase[k] += CHAINS * increment;
        }
    }
    copies.phase[copy] = phase[0];
}

// N samples of the copies from `first` up to `end`, and the rest up to `length` in smaller steps.
template <unsigned N, uint32_t SHIFT>
void add_copies(const OscillatorCopies& copies, uint32_t first, uint32_t end, float pitch,
                float* samples, uint32_t length) {
    for (; length >= N; length -= N, samples += N) {
        float sums[N];
        uint32_t copy = first;
        if (first == 0) {
            // The sum starts with the first copy's samples, not with 0: 0 + -0 is 0.
            add_copy<N, SHIFT, true>(copies, copy++, pitch, sums);
        } else {
            for (unsigned i = 0; i < N; i++)
                sums[i] = samples[i];
        }
        for (; copy < end; copy++)
            add_copy<N, SHIFT, false>(copies, copy, pitch, sums);
        for (unsigned i = 0; i < N; i++)
            samples[i] = sums[i];
    }
    if constexpr (N > 1) {
        if (length > 0)
            add_copies<(N > PHASES ? N / 2 : 1), SHIFT>(copies, first, end, pitch, samples, length);
    }
}

template <uint32_t SHIFT>
void render(const OscillatorCopies& copies, uint32_t first, uint32_t end, float* samples,
            const float* pitches, uint32_t size) {
    for (uint32_t t = 0; t < size; t += CONTROL_PERIOD) {
        const uint32_t length = size - t < CONTROL_PERIOD ? size - t : CONTROL_PERIOD;
        add_copies<WIDEST, SHIFT>(copies, first, end, pitches[t], samples + t, length);
    }
}

template <uint32_t SHIFT>
void render_runs(const OscillatorCopies& copies, float* samples, const float* pitches,
                 uint32_t size) {
    uint32_t first = 0;
    while (first < copies.count) {
        uint32_t end = first + 1;
        while (end < copies.count && copies.table[end] == copies.table[first])
            end++;
        render<SHIFT>(copies, first, end, samples, pitches, size);
        first = end;
    }
}

} // namespace

void oscillator_copies(const OscillatorCopies& copies, float* samples, const float* pitches,
                       uint32_t size) {
    if (copies.table_shift != WAVE_SHIFT)
        render<0>(copies, 0, copies.count, samples, pitches, size);
    else if (copies.runs > 1 && copies.count >= SHORT_RUN * copies.runs)
        render_runs<WAVE_SHIFT>(copies, samples, pitches, size);
    else
        render<WAVE_SHIFT>(copies, 0, copies.count, samples, pitches, size);
}

} // namespace KERNEL_NAMESPACE
