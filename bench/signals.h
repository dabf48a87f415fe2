// Input signals and frames of the benchmarks.

#pragma once

#include <benchmark/benchmark.h>

#include <random>

#include "softsynth/signal/buffer.h"

namespace tarquil {

inline constexpr uint32_t BENCH_BLOCK = 256;

// White noise of a fixed seed, within +-amplitude.
inline void fill_noise(float* samples, uint32_t count, float amplitude = 0.5F) {
    std::mt19937 random(1);
    std::uniform_real_distribution<float> level(-amplitude, amplitude);
    for (uint32_t i = 0; i < count; i++)
        samples[i] = level(random);
}

inline void fill_value(MonoBuffer& buffer, uint32_t size, float value) {
    buffer.init(size);
    for (uint32_t i = 0; i < size; i++)
        buffer.get_first_sample_ptr()[i] = value;
}

// Shows the cost of one frame (times `per_frame` voices or copies).
inline void count_frames(benchmark::State& state, uint32_t frames, uint32_t per_frame = 1) {
    state.counters["per_sample"] =
        benchmark::Counter(double(frames) * per_frame * double(state.iterations()),
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

} // namespace tarquil
