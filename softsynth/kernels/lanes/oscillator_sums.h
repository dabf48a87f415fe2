// The sum of an oscillator group's copies with N samples in registers.
//
// Random table places leave two scalar loads a cycle as the limit, and gathers are slower.  What
// this form saves are the loads and stores of the sums and the wait for the phase's addition: four
// phases a copy advance by four samples at a time.  Neighbouring copies mostly share a table; one
// run of them at a time over the whole block keeps that table in the nearest cache.

#pragma once

#include "softsynth/kernels/kernel_functions.h"
#include "softsynth/kernels/phase_increment.h"
#include "softsynth/parameters/constants.h"

namespace tarquil {

namespace KERNEL_NAMESPACE {
namespace {

constexpr unsigned PHASES = 4;

// Below this many copies a run, walking by runs costs more than the cache saves.
constexpr uint32_t SHORT_RUN = 8;

// The shift of tables of 4096 samples, which all waveforms but the noise have.
constexpr uint32_t WAVE_SHIFT = 20;

// Adds N samples of one copy to the sums, or starts them.  SHIFT 0: the copies' own.
template <unsigned N, uint32_t SHIFT, bool START>
inline void add_copy(const OscillatorCopies& copies, uint32_t copy, uint32_t increment,
                     float* sums) {
    constexpr unsigned CHAINS = N < PHASES ? 1 : PHASES;
    const uint32_t shift = SHIFT == 0 ? copies.table_shift : SHIFT;
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

// A run of copies: those from `first` up to `end`, with their increments (by copy).
struct Run {
    const OscillatorCopies& copies;
    uint32_t first;
    uint32_t end;
    const uint32_t* increments;
};

// N samples of the run's copies, and the rest up to `length` in smaller steps.
template <unsigned N, uint32_t SHIFT>
void add_copies(const Run& run, float* samples, uint32_t length) {
    for (; length >= N; length -= N, samples += N) {
        float sums[N];
        uint32_t copy = run.first;
        if (copy == 0) {
            // The sum starts with the first copy's samples, not with 0: 0 + -0 is 0.
            add_copy<N, SHIFT, true>(run.copies, copy, run.increments[copy], sums);
            copy++;
        } else {
            for (unsigned i = 0; i < N; i++)
                sums[i] = samples[i];
        }
        for (; copy < run.end; copy++)
            add_copy<N, SHIFT, false>(run.copies, copy, run.increments[copy], sums);
        for (unsigned i = 0; i < N; i++)
            samples[i] = sums[i];
    }
    if constexpr (N > 1) {
        if (length > 0)
            add_copies<(N > PHASES ? N / 2 : 1), SHIFT>(run, samples, length);
    }
}

template <unsigned N, uint32_t SHIFT>
void render(const OscillatorCopies& copies, uint32_t first, uint32_t end, float* samples,
            const float* pitches, uint32_t size) {
    // Known before the sums need every register.
    uint32_t increments[MAX_OSCILLATOR_COPIES];
    for (uint32_t t = 0; t < size; t += CONTROL_PERIOD) {
        const uint32_t length = size - t < CONTROL_PERIOD ? size - t : CONTROL_PERIOD;
        if (t == 0 || pitches[t] != pitches[t - CONTROL_PERIOD]) {
            for (uint32_t copy = first; copy < end; copy++)
                increments[copy] = phase_increment(pitches[t], copies.increment_scale[copy]);
        }
        add_copies<N, SHIFT>({copies, first, end, increments}, samples + t, length);
    }
}

template <unsigned N, uint32_t SHIFT>
void render_runs(const OscillatorCopies& copies, float* samples, const float* pitches,
                 uint32_t size) {
    uint32_t first = 0;
    while (first < copies.count) {
        uint32_t end = first + 1;
        while (end < copies.count && copies.table[end] == copies.table[first])
            end++;
        render<N, SHIFT>(copies, first, end, samples, pitches, size);
        first = end;
    }
}

// More than one copy, N samples at a time.
template <unsigned N>
void render_copies(const OscillatorCopies& copies, float* samples, const float* pitches,
                   uint32_t size) {
    if (copies.table_shift != WAVE_SHIFT)
        render<N, 0>(copies, 0, copies.count, samples, pitches, size);
    else if (copies.runs > 1 && copies.count >= SHORT_RUN * copies.runs)
        render_runs<N, WAVE_SHIFT>(copies, samples, pitches, size);
    else
        render<N, WAVE_SHIFT>(copies, 0, copies.count, samples, pitches, size);
}

} // namespace

} // namespace KERNEL_NAMESPACE

} // namespace tarquil
