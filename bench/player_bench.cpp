// How long an edit waits for a player that loads, saves and changes programs meanwhile.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <ctime>
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

double thread_seconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) + 1e-9 * double(time.tv_nsec);
}

// Eight players, 12 voices each, on one thread and then shared by two: how many times the work is
// done in the same time, and what that would be on two cores that do nothing else, by the processor
// time that it takes.
void eight_players_on_two_threads(benchmark::State& state) {
    constexpr int BLOCKS = 64;
    struct Instance {
        Instance() : stream(player.audio()) {
            player.start();
            for (unsigned i = 0; i < 12; i++)
                player.play_key(i, 40 + 3 * i, 100);
        }
        Player player;
        GranuleStream stream;
    };
    std::vector<Instance> players(8);
    // Processor time of `count` players from `first` on.
    const auto render = [&](size_t first, size_t count) {
        const double start = thread_seconds();
        for (int block = 0; block < BLOCKS; block++) {
            for (size_t i = first; i < first + count; i++)
                benchmark::DoNotOptimize(players[i].stream.next(256));
        }
        return thread_seconds() - start;
    };
    using Clock = std::chrono::steady_clock;
    Clock::duration alone{};
    Clock::duration shared{};
    double processor_alone = 0;
    double processor_shared = 0;
    for (auto _ : state) {
        const Clock::time_point start = Clock::now();
        processor_alone += render(0, 8);
        const Clock::time_point middle = Clock::now();
        double other = 0;
        std::thread second([&] { other = render(4, 4); });
        const double own = render(0, 4);
        second.join();
        alone += middle - start;
        shared += Clock::now() - middle;
        processor_shared += std::max(own, other);
    }
    state.counters["times_the_work"] = double(alone.count()) / double(shared.count());
    state.counters["times_by_processor_time"] = processor_alone / processor_shared;
}
BENCHMARK(eight_players_on_two_threads)->UseRealTime()->Unit(benchmark::kMillisecond);

// What the lock is held for at most: the copy of the whole bank that is handed out.
void copy_of_the_bank(benchmark::State& state) {
    Player player;
    for (auto _ : state)
        benchmark::DoNotOptimize(player.get_bank());
}
BENCHMARK(copy_of_the_bank)->Unit(benchmark::kMicrosecond);

} // namespace

} // namespace tarquil
