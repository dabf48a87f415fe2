// The audio call of every format: whatever a host asks of it, and whatever happens on other threads
// meanwhile, it computes and does nothing else; and the watch that sees that.

#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <mutex>
#include <thread>

#include "instrument/settings.h"
#include "softsynth/parameters/host_parameters.h"
#include "tests/formats/every/callback_watch.h"
#include "tests/formats/every/every_format.h"

namespace tarquil {

namespace {

using FormatsRealtime = EveryFormat;

constexpr uint32_t MAX_FRAMES = 1024;

// A different heavy sound in each of the first programs of the native dialect.
std::string heavy_state() {
    TarqSettings bank;
    for (int program = 0; program < 32; program++) {
        for (const auto& [number, byte] : std::initializer_list<std::pair<unsigned, int>>{
                 {CTRL_FILTER1_TYPE, program % 25},
                 {CTRL_FILTER1_DEPTH, program % 5},
                 {CTRL_OSC1_TYPE, program % 6},
                 {CTRL_OSC2_TYPE, 5},
                 {CTRL_OSC1_MULTI_COUNT, program * 4},
                 {CTRL_CHANFX1_TYPE, program % 6},
                 {CTRL_CHANFX1B_TYPE, (program + 1) % 6},
                 {CTRL_CHANFX2_TYPE, program % 4},
                 {CTRL_CHAN_FILTER1_TYPE, program % 9},
                 {CTRL_CUTOFF1_INFLUENCE1_SOURCE, program % 10},
                 {CTRL_OSC2_INFLUENCE_SOURCE, program % 6},
                 {CTRL_AUX1_LEVEL, 90},
                 {CTRL_AUX2_LEVEL, 90}})
            bank.get_instrument(unsigned(program)).set_controller(number, byte);
    }
    return save_state_compact(bank);
}

// The General MIDI set, with controllers that move something.
std::string taught_state() {
    InstancePlayer taught;
    LearnedControls learned;
    learned.learn(20, CTRL_PANNING);
    learned.learn(11, CTRL_CHANFX1_TYPE);
    taught.player().set_learned(learned);
    return taught.save_state();
}

struct Phase {
    const char* name;
    void (*prepare)(FormatDriver&);
};

const Phase PHASES[] = {
    {"silence", [](FormatDriver&) {}},
    {"notes",
     [](FormatDriver& plugin) {
         for (unsigned i = 0; i < 96; i++)
             plugin.add({i % 64, {uint8_t(0x90 + i % 16), uint8_t(20 + i), 100}});
     }},
    {"parameters and controllers",
     [](FormatDriver& plugin) {
         for (const ControllerInfo& info : controller_rows()) {
             if (is_automatable_controller(info.number))
                 plugin.set(info.number, filter_controller(info.number, int(info.number % 16)),
                            info.number % 64);
         }
         for (unsigned i = 0; i < 2000; i++)
             plugin.add({i % 64,
                         {uint8_t((i % 2 == 0 ? 0xB0 : 0xE0) + i % 16), uint8_t(i % 120),
                          uint8_t(i % 128)}});
     }},
    {"program changes",
     [](FormatDriver& plugin) {
         for (unsigned i = 0; i < 16; i++)
             plugin.add({i, {uint8_t(0xC0 + i), uint8_t(16 + i), 0}});
     }},
    {"more than there is room for",
     [](FormatDriver& plugin) {
         for (unsigned i = 0; i < 17000; i++)
             plugin.add({i % 64, {uint8_t(i % 2 == 0 ? 0x90 : 0x80), uint8_t(i / 2 % 128), 90}});
     }},
    {"what only this format has", [](FormatDriver& plugin) { plugin.add_specials(); }},
};

void call_audio(FormatDriver& plugin) noexcept CALLED_IN_REAL_TIME {
    plugin.call();
}

// In both dialects in turn.
TEST_P(FormatsRealtime, TheAudioCallOnlyComputes) {
    const std::string states[] = {heavy_state(), taught_state()};
    std::vector<float> left(MAX_FRAMES);
    std::vector<float> right(MAX_FRAMES);
    CallbackCounts counts[std::size(PHASES)];
    const bool locks = start()->locks_for_parameters();
    for (const double wanted : {44100.0, 48000.0, 96000.0}) {
        if (locks && wanted != rate())
            continue;
        const auto plugin = start_at(wanted);
        const auto load = [&](unsigned round) {
            plugin->save();
            plugin->load(states[round % 2]);
        };
        for (const bool is_counted : {false, true}) { // at first it is warmed up
            std::atomic<bool> is_over{locks};
            std::thread beside([&] {
                for (unsigned round = 0; !is_over; round++)
                    load(round);
            });
            for (size_t phase = 0; phase < std::size(PHASES); phase++) {
                for (const uint32_t frames : {64U, 61U, MAX_FRAMES, 0U}) {
                    if (locks)
                        load(frames);
                    PHASES[phase].prepare(*plugin);
                    plugin->prepare(left.data(), right.data(), frames);
                    const auto play = [&] {
                        CallbackCounts uncounted;
                        const CallbackWatch watch(is_counted ? counts[phase] : uncounted);
                        call_audio(*plugin);
                    };
                    if (!run_without_system_calls(play))
                        play();
                    plugin->finish();
                }
            }
            is_over = true;
            beside.join();
        }
    }
    for (size_t phase = 0; phase < std::size(PHASES); phase++) {
        EXPECT_EQ(counts[phase].allocations, 0) << PHASES[phase].name;
        EXPECT_EQ(locks ? counts[phase].locks : counts[phase].all_locks, 0) << PHASES[phase].name;
        EXPECT_EQ(counts[phase].system_calls, 0)
            << PHASES[phase].name << ": " << counts[phase].last_system_call;
    }
}

FOR_EVERY_FORMAT(FormatsRealtime);

#ifdef REALTIME_SANITIZER
TEST(Realtime, TheSanitizerSeesWhatItIsFor) {
    const auto allocate = []() noexcept CALLED_IN_REAL_TIME {
        void* volatile memory = std::malloc(100);
        std::free(memory);
    };
    EXPECT_DEATH(allocate(), "malloc");
}
#else
TEST(Realtime, TheWatchSeesWhatItIsFor) {
    CallbackCounts counts;
    const auto misbehave = [&] {
        static std::mutex first;
        static std::mutex second;
        const CallbackWatch watch(counts);
        std::free(std::malloc(100)); // NOLINT
        void* volatile kept = std::calloc(3, 5);
        std::free(kept);
        const std::lock_guard hold_first(first);
        const std::lock_guard hold_second(second);
        getppid();
    };
    const bool is_trapped = run_without_system_calls(misbehave);
    if (!is_trapped)
        misbehave();
    EXPECT_GE(counts.allocations, 2);
    EXPECT_EQ(counts.locks, 1);
    EXPECT_EQ(counts.system_calls, is_trapped ? 1 : 0);
}
#endif

} // namespace

} // namespace tarquil
