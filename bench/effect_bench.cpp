// Channel effects and the master section's stages.

#include "bench/audio_hash.h"
#include "bench/signals.h"
#include "player/shared_waveforms.h"
#include "softsynth/effects/mono_effect.h"
#include "softsynth/effects/multi_compressor.h"
#include "softsynth/effects/psola.h"
#include "softsynth/effects/stereo_effect.h"
#include "softsynth/reverb/revmodel.h"

namespace tarquil {

namespace {

MonoBuffer mono_noise;
MonoBuffer mono;
StereoBuffer stereo_noise;
StereoBuffer stereo;

// Renders one block again and again: prepare() refills the input, block() processes it.
template <typename Block> void run_stereo(benchmark::State& state, const Block& block) {
    stereo_noise.init(BENCH_BLOCK);
    stereo.init(BENCH_BLOCK);
    fill_noise(stereo_noise.get_first_left_sample_ptr(), 2 * BENCH_BLOCK);
    AudioHash hash;
    for (int i = 0; i < 100; i++) {
        Buffer::copy(stereo_noise, stereo);
        block();
        hash.add(stereo.get_first_left_sample_ptr(), size_t(2) * BENCH_BLOCK);
    }
    for (auto _ : state) {
        Buffer::copy(stereo_noise, stereo);
        block();
        benchmark::ClobberMemory();
    }
    count_frames(state, BENCH_BLOCK);
    hash.label(state);
}

// Argument: the effect's type (disto, compr, lo-fi, filter, exciter).
void mono_effect(benchmark::State& state) {
    static MonoEffect effect;
    const auto type = MonoEffect::effect_type(state.range(0));
    static MonoBuffer cutoff;
    static MonoBuffer resonance;
    mono_noise.init(BENCH_BLOCK);
    mono.init(BENCH_BLOCK);
    fill_noise(mono_noise.get_first_sample_ptr(), BENCH_BLOCK);
    AudioHash hash;
    const auto block = [&] {
        std::copy_n(mono_noise.get_first_sample_ptr(), BENCH_BLOCK, mono.get_first_sample_ptr());
        effect.render(type, mono, 40, 60, 1, 4, 60, cutoff, resonance);
    };
    block();
    hash.add(mono.get_first_sample_ptr(), BENCH_BLOCK);
    for (auto _ : state) {
        block();
        benchmark::ClobberMemory();
    }
    count_frames(state, BENCH_BLOCK);
    hash.label(state);
}
BENCHMARK(mono_effect)->DenseRange(1, 5);

// Argument: the effect's type (delay, chorus, flanger).
void stereo_effect(benchmark::State& state) {
    static StereoEffect effect;
    static StereoEffectScratch scratch(shared_waveforms());
    const auto type = StereoEffect::effect_type(state.range(0));
    run_stereo(state,
               [&] { effect.render(type, stereo, stereo, 40, 60, 60, 1, 60, 0.5F, scratch); });
}
BENCHMARK(stereo_effect)->DenseRange(1, 3);

void reverb(benchmark::State& state) {
    static revmodel model;
    model.update();
    run_stereo(state, [] {
        model.processmix(stereo_noise.get_first_left_sample_ptr(),
                         stereo.get_first_left_sample_ptr(), BENCH_BLOCK);
    });
}
BENCHMARK(reverb);

void compressor(benchmark::State& state) {
    static MultiCompressor multi;
    multi.reset();
    const float crossovers[] = {300, 1000, 5000};
    const float thresholds[] = {0.1F, 0.1F, 0.1F, 0.1F};
    const float ratios[] = {4, 4, 4, 4};
    const float attacks[] = {0.01F, 0.01F, 0.01F, 0.01F};
    const float releases[] = {0.1F, 0.1F, 0.1F, 0.1F};
    const float makeups[] = {1, 1, 1, 1};
    run_stereo(state, [&] {
        multi.process(stereo, crossovers, thresholds, ratios, attacks, releases, makeups);
    });
}
BENCHMARK(compressor);

// A beat of 60 bpm.  Argument: the speed-up.
void capture(benchmark::State& state) {
    constexpr uint32_t PERIOD = 44100;
    static float beat[PERIOD];
    static float loop[65536];
    fill_noise(beat, PERIOD);
    unsigned loop_len = 0;
    for (auto _ : state) {
        psola_time_stretch(beat, PERIOD, int(state.range(0)), loop, &loop_len);
        benchmark::ClobberMemory();
    }
    AudioHash hash;
    hash.add(loop, loop_len);
    hash.label(state);
}
BENCHMARK(capture)->Arg(2)->Arg(4)->Arg(8)->Arg(16)->Unit(benchmark::kMicrosecond);

} // namespace

} // namespace tarquil
