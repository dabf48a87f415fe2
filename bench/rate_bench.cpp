// The way to a host's rate.

#include <algorithm>

#include "bench/audio_hash.h"
#include "bench/signals.h"
#include "softsynth/rate/rate_bridge.h"

namespace tarquil {

namespace {

// Stereo host frames in the host's blocks; argument: its rate in Hz.
void rate_bridge(benchmark::State& state) {
    static float noise[2 * MAX_NUM_SAMPLES];
    fill_noise(noise, 2 * MAX_NUM_SAMPLES);
    float left[BENCH_BLOCK];
    float right[BENCH_BLOCK];
    RateBridge bridge;
    if (!bridge.activate(double(state.range(0)), 32))
        return state.SkipWithError("no such rate");
    const auto block = [&] {
        bridge.render(left, right, BENCH_BLOCK, [](float* frames, uint32_t num_frames) {
            std::copy_n(noise, 2 * num_frames, frames);
        });
    };
    AudioHash hash;
    for (int i = 0; i < 100; i++) {
        block();
        hash.add(left, BENCH_BLOCK);
        hash.add(right, BENCH_BLOCK);
    }
    for (auto _ : state) {
        block();
        benchmark::ClobberMemory();
    }
    count_frames(state, BENCH_BLOCK);
    hash.label(state);
}
BENCHMARK(rate_bridge)
    ->Arg(8000)
    ->Arg(22050)
    ->Arg(32000)
    ->Arg(44100)
    ->Arg(47999)
    ->Arg(48000)
    ->Arg(88200)
    ->Arg(96000)
    ->Arg(192000)
    ->Arg(384000);

// A table that nobody holds yet; argument: the host's rate in Hz.
void rate_table(benchmark::State& state) {
    const auto ratio = RateRatio::of(double(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(PolyphaseTable(*ratio));
}
BENCHMARK(rate_table)->Arg(48000)->Arg(96000)->Arg(47999)->Unit(benchmark::kMicrosecond);

} // namespace

} // namespace tarquil
