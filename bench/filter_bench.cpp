// Filters and resamplers.

#include "bench/audio_hash.h"
#include "bench/signals.h"
#include "softsynth/filters/filter.h"
#include "softsynth/filters/ladderfilter.h"
#include "softsynth/filters/stereo_filter.h"

namespace tarquil {

namespace {

MonoBuffer cutoff;
MonoBuffer resonance;
float noise[2 * BENCH_BLOCK];
float samples[2 * BENCH_BLOCK];

template <typename AnyFilter> void run(benchmark::State& state, AnyFilter& filter) {
    fill_noise(noise, BENCH_BLOCK);
    fill_value(cutoff, BENCH_BLOCK, 5.0F);
    fill_value(resonance, BENCH_BLOCK, 2.0F);
    AudioHash hash;
    const auto block = [&] {
        std::copy_n(noise, BENCH_BLOCK, samples);
        filter.render(samples, BENCH_BLOCK, cutoff.get_first_sample_ptr(),
                      resonance.get_first_sample_ptr());
    };
    block();
    hash.add(samples, BENCH_BLOCK);
    for (auto _ : state) {
        block();
        benchmark::ClobberMemory();
    }
    count_frames(state, BENCH_BLOCK);
    hash.label(state);
}

// Arguments: type, depth.
void biquad(benchmark::State& state) {
    Filter filter;
    filter.init(get_base_filter_type(FilterType(state.range(0))),
                get_filter_waveshape(FilterType(state.range(0))), int(state.range(1)), 0.0F);
    run(state, filter);
}
BENCHMARK(biquad)->ArgsProduct({{FILTER_LOWPASS}, {1, 2, 3, 4}})->Args({FILTER_PEAKING_EQ, 1});
BENCHMARK(biquad)->Name("biquad_shaped")->Args({9 + FILTER_LOWPASS, 4});

void ladder(benchmark::State& state) {
    static LadderFilter filter;
    filter.init(FilterType(state.range(0)), 0.0F);
    run(state, filter);
}
BENCHMARK(ladder)->DenseRange(18, 24);

void stereo_filter(benchmark::State& state) {
    StereoFilter filter;
    filter.init(FILTER_PEAKING_EQ);
    filter.set(0.1F, 0.7F, 0.3F);
    StereoFilter* const alone = &filter;
    fill_noise(noise, 2 * BENCH_BLOCK);
    AudioHash hash;
    const auto block = [&] {
        std::copy_n(noise, 2 * BENCH_BLOCK, samples);
        StereoFilter::render({&alone, 1}, samples, BENCH_BLOCK);
    };
    block();
    hash.add(samples, size_t(2) * BENCH_BLOCK);
    for (auto _ : state) {
        block();
        benchmark::ClobberMemory();
    }
    count_frames(state, BENCH_BLOCK);
    hash.label(state);
}
BENCHMARK(stereo_filter);

} // namespace

} // namespace tarquil
