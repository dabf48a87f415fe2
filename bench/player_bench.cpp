// How long an edit waits for a player that loads, saves and changes programs meanwhile.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "player/granule_stream.h"
#include "player/player.h"

namespace tarquil {

namespace {

// Blocks of 64 frames on the timed thread; a bank of 128 is loaded and saved over and over on
// another.  The longest edit and the longest block are shown beside the mean: an edit that waits
// longer than the lock is ever held was put aside by the system.
void edits_beside_loads(benchmark::State& state) {
    Player player;
    player.start();
    const std::string bank = player.save_state();
    std::atomic<bool> is_over{false};
    std::thread loader([&] {
        while (!is_over) {
            if (player.load_state(bank) != 0 || player.save_state().empty())
                std::abort();
        }
    });
    GranuleStream stream(player.audio());
    const auto microseconds_since = [](std::chrono::steady_clock::time_point start) {
        return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start)
            .count();
    };
    std::vector<double> edits;
    std::vector<double> blocks;
    unsigned count = 0;
    for (auto _ : state) {
        auto start = std::chrono::steady_clock::now();
        player.set_controller(CTRL_PANNING, int(count % 128));
        player.set_channel_program(count % 16, count / 16 % 128);
        edits.push_back(microseconds_since(start));
        start = std::chrono::steady_clock::now();
        benchmark::DoNotOptimize(stream.next(64));
        blocks.push_back(microseconds_since(start));
        count++;
    }
    is_over = true;
    loader.join();
    const auto quantile = [](std::vector<double>& values, double part) {
        const auto place = values.begin() + ptrdiff_t(double(values.size() - 1) * part);
        std::nth_element(values.begin(), place, values.end());
        return *place;
    };
    state.counters["edit_p99_us"] = quantile(edits, 0.99);
    state.counters["edit_p999_us"] = quantile(edits, 0.999);
    state.counters["edit_worst_us"] = quantile(edits, 1);
    state.counters["block_p999_us"] = quantile(blocks, 0.999);
}
BENCHMARK(edits_beside_loads)->UseRealTime()->Unit(benchmark::kMicrosecond);

// A player of its own on each thread, 32 voices: with as many cores a block takes no longer.
void players_on_threads(benchmark::State& state) {
    Player player;
    player.start();
    for (unsigned i = 0; i < 32; i++)
        player.play_key(i % 16, 40 + i, 100);
    GranuleStream stream(player.audio());
    for (auto _ : state)
        benchmark::DoNotOptimize(stream.next(256));
}
BENCHMARK(players_on_threads)->Threads(1)->Threads(2)->UseRealTime()->Unit(benchmark::kMicrosecond);

// What the lock is held for at most: the copy of the whole bank that is handed out.
void copy_of_the_bank(benchmark::State& state) {
    Player player;
    for (auto _ : state)
        benchmark::DoNotOptimize(player.get_bank());
}
BENCHMARK(copy_of_the_bank)->Unit(benchmark::kMicrosecond);

} // namespace

} // namespace tarquil
