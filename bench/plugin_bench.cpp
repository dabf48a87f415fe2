// The plug-in as a host meets it: a scan, and the first sound in a new process.

#include <benchmark/benchmark.h>

#include <chrono>
#include <string>
#include <vector>

#include "tools/plugin/loaded_plugin.h"

namespace tarquil {

namespace {

constexpr uint32_t BLOCK = 256;

// Loads the module, opens the plug-in, asks for its name and closes it.
void plugin_scan(benchmark::State& state) {
    for (auto _ : state) {
        LoadedPlugin plugin(TARQUIL_PLUGIN, BLOCK);
        benchmark::DoNotOptimize(plugin.get_name());
    }
}
BENCHMARK(plugin_scan)->Unit(benchmark::kMillisecond);

VstMidiEvent note_on(unsigned channel) {
    VstMidiEvent event;
    event.midiData[0] = char(0x90 | channel);
    event.midiData[1] = 60;
    event.midiData[2] = 100;
    return event;
}

// The first block, with a note on every channel; "start" is what went before it: the engine and
// its wavetables, from the cache of an earlier run.  Cold only once in a process.
void plugin_first_block(benchmark::State& state) {
    using Clock = std::chrono::steady_clock;
    for (auto _ : state) {
        LoadedPlugin plugin(TARQUIL_PLUGIN, BLOCK);
        const Clock::time_point begin = Clock::now();
        plugin.start();
        const Clock::time_point started = Clock::now();
        std::vector<VstMidiEvent> notes;
        for (unsigned channel = 0; channel < 16; channel++)
            notes.push_back(note_on(channel));
        std::vector<float> pcm(size_t(2) * BLOCK);
        plugin.send(notes);
        plugin.render(pcm.data(), BLOCK, 0);
        const std::chrono::duration<double> first_block = Clock::now() - started;
        const std::chrono::duration<double, std::milli> start = started - begin;
        state.SetIterationTime(first_block.count());
        state.SetLabel("start " + std::to_string(start.count()) + " ms");
    }
}
BENCHMARK(plugin_first_block)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace

} // namespace tarquil
