// The whole engine: blocks of many voices, note-on, start.

#include <algorithm>
#include <chrono>
#include <memory>
#include <vector>

#include "bench/audio_hash.h"
#include "bench/signals.h"
#include "player/shared_waveforms.h"
#include "softsynth/core/core.h"

namespace tarquil {

namespace {

float pcm[2 * MAX_NUM_SAMPLES];

const TarqSettings bank;

void run(Tarquil& engine, uint32_t size, const std::vector<midi_event>& events, uint32_t time) {
    static const midi_event none;
    engine.run(pcm, size, events.empty() ? &none : events.data(), uint32_t(events.size()), time);
}

// Notes spread over the sixteen channels.
std::vector<midi_event> chord(int voices, uint32_t time) {
    std::vector<midi_event> events;
    for (int i = 0; i < voices; i++)
        events.push_back({time, midi_status(MIDI_NOTE_ON, unsigned(i % NUM_CHANNELS)),
                          uint8_t(36 + i / NUM_CHANNELS * 7), 100});
    return events;
}

void set_all_channels(Tarquil& engine, unsigned controller, uint8_t value) {
    std::vector<midi_event> events;
    for (int c = 0; c < NUM_CHANNELS; c++)
        events.push_back(
            {0, midi_status(MIDI_CONTROL_CHANGE, unsigned(c)), uint8_t(controller), value});
    run(engine, GRANULARITY, events, 0);
}

double milliseconds_now() {
    return std::chrono::duration<double, std::milli>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

// Arguments: voices, frames a block, filter type.  The worst block is shown beside the mean.
void engine_blocks(benchmark::State& state) {
    const int voices = int(state.range(0));
    const auto size = uint32_t(state.range(1));
    const std::unique_ptr<Tarquil> engine(new Tarquil(bank, shared_waveforms()));
    set_all_channels(*engine, CTRL_FILTER1_TYPE, uint8_t(state.range(2)));
    set_all_channels(*engine, CTRL_FILTER1_DEPTH, 1);
    set_all_channels(*engine, CTRL_FILTER1_CUTOFF, 80);
    uint32_t time = GRANULARITY;
    run(*engine, size, chord(voices, time), time);
    time += size;
    AudioHash hash;
    for (int i = 0; i < 64; i++) {
        run(*engine, size, {}, time);
        time += size;
        hash.add(pcm, size_t(2) * size);
    }
    double worst = 0;
    for (auto _ : state) {
        const double before = milliseconds_now();
        run(*engine, size, {}, time);
        worst = std::max(worst, milliseconds_now() - before);
        time += size;
    }
    count_frames(state, size);
    state.counters["worst_us"] = worst * 1000;
    hash.label(state);
}
BENCHMARK(engine_blocks)
    ->ArgsProduct({{0, 1, 16, 64, 96}, {64, 256, 1024}, {FILTER_LOWPASS}})
    ->Args({96, 256, FILTER_LADDER_START_MARKER + 3});

// One voice of three groups.  Argument: copies a group.
void note_on(benchmark::State& state) {
    const std::unique_ptr<Tarquil> engine(new Tarquil(bank, shared_waveforms()));
    const auto byte = uint8_t((state.range(0) - 1) / 2);
    for (const unsigned c : {CTRL_OSC1_MULTI_COUNT, CTRL_OSC2_MULTI_COUNT, CTRL_OSC3_MULTI_COUNT})
        set_all_channels(*engine, c, byte);
    static Channel channel;
    static Voice voice;
    static VoicePool pool;
    static PhaseRandom random;
    static TimelineMemory timelines;
    channel.attach(pool, random, shared_waveforms(), timelines);
    for (const unsigned c : {CTRL_OSC1_MULTI_COUNT, CTRL_OSC2_MULTI_COUNT, CTRL_OSC3_MULTI_COUNT})
        channel.get_controllers().get_controller(c).push_back({0, byte});
    for (auto _ : state) {
        voice.note_on(channel, 60, 100, 0);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(note_on)->Arg(1)->Arg(15)->Arg(255)->Unit(benchmark::kMicrosecond);

// Ninety-six plain voices start in one block of 64 frames.
void note_burst(benchmark::State& state) {
    constexpr uint32_t SIZE = 64;
    double worst = 0;
    for (auto _ : state) {
        state.PauseTiming();
        const std::unique_ptr<Tarquil> engine(new Tarquil(bank, shared_waveforms()));
        run(*engine, SIZE, {}, 0);
        const std::vector<midi_event> events = chord(96, SIZE);
        state.ResumeTiming();
        const double before = milliseconds_now();
        run(*engine, SIZE, events, SIZE);
        worst = std::max(worst, milliseconds_now() - before);
    }
    state.counters["worst_us"] = worst * 1000;
}
BENCHMARK(note_burst)->Unit(benchmark::kMicrosecond)->Iterations(50);

// An engine of its own, the wavetables being there already.
void engine_start(benchmark::State& state) {
    for (auto _ : state) {
        const std::unique_ptr<Tarquil> engine(new Tarquil(bank, shared_waveforms()));
        benchmark::DoNotOptimize(engine.get());
    }
}
BENCHMARK(engine_start)->Unit(benchmark::kMillisecond);

// The process's wavetables, read from the cache.
void tables_warm(benchmark::State& state) {
    shared_waveforms();
    for (auto _ : state) {
        const WaveformStore store(waveform_cache_folder());
        benchmark::DoNotOptimize(&store);
    }
}
BENCHMARK(tables_warm)->Unit(benchmark::kMillisecond);

} // namespace

} // namespace tarquil
