// Oscillator groups and envelopes.

#include <cstdlib>

#include "bench/audio_hash.h"
#include "bench/signals.h"
#include "player/shared_waveforms.h"
#include "softsynth/voices/envelope.h"
#include "softsynth/wavetables/oscillator_group.h"

namespace tarquil {

namespace {

MonoBuffer out;
MonoBuffer pitch;

void oscillator_group(benchmark::State& state) {
    const int copies = int(state.range(0));
    static OscillatorGroup group;
    group.init(OSC_SAW);
    for (int j = 0; j < copies; j++)
        group.add_copy(shared_waveforms(), 220.0F + 0.01F * float(j), float(j) / float(copies));
    fill_value(pitch, BENCH_BLOCK, 1.0F);
    out.init(BENCH_BLOCK);
    AudioHash hash;
    group.render(out, pitch, 0);
    hash.add(out.get_first_sample_ptr(), BENCH_BLOCK);
    for (auto _ : state) {
        group.render(out, pitch, 0);
        benchmark::ClobberMemory();
    }
    count_frames(state, BENCH_BLOCK, uint32_t(copies));
    hash.label(state);
}
BENCHMARK(oscillator_group)->Arg(1)->Arg(3)->Arg(15)->Arg(63)->Arg(255);

void envelope(benchmark::State& state) {
    Envelope env;
    env_init(&env, 0, 10000, 20000, 0.5F, 10000, 1.0F);
    env_set_release_time(&env, 35000);
    static float samples[BENCH_BLOCK];
    AudioHash hash;
    for (uint32_t t = 0; t < 48000; t += BENCH_BLOCK) {
        env_render(&env, samples, t, t + BENCH_BLOCK);
        hash.add(samples, BENCH_BLOCK);
    }
    uint32_t t = 0;
    for (auto _ : state) {
        env_render(&env, samples, t, t + BENCH_BLOCK);
        benchmark::ClobberMemory();
        t = (t + BENCH_BLOCK) % 48000;
    }
    count_frames(state, BENCH_BLOCK);
    hash.label(state);
}
BENCHMARK(envelope);

} // namespace

} // namespace tarquil
