// LV2's audio call: whatever a host asks of it, and whatever happens on other threads meanwhile, it
// computes and does nothing else.

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <thread>

#include "tests/formats/lv2/lv2_host.h"
#include "tests/vst/callback_watch.h"

namespace tarquil {

namespace {

struct Phase {
    const char* name;
    std::function<void(Lv2Host&, unsigned round)> prepare;
};

const Phase PHASES[] = {
    {"silence", [](Lv2Host&, unsigned) {}},
    {"notes",
     [](Lv2Host& host, unsigned) {
         for (unsigned i = 0; i < 96; i++)
             host.add_midi(i % 64, {uint8_t(0x90 + i % 16), uint8_t(20 + i), 100});
     }},
    {"controls and controllers",
     [](Lv2Host& host, unsigned round) {
         for (const Lv2Control& control : lv2_controls())
             host.control(control.number()) = control.value(int((control.number() + round) % 16));
         for (unsigned i = 0; i < 2000; i++)
             host.add_midi(i % 64, {uint8_t((i % 2 == 0 ? 0xB0 : 0xE0) + i % 16), uint8_t(i % 120),
                                    uint8_t(i % 128)});
     }},
    {"programs",
     [](Lv2Host& host, unsigned round) {
         for (unsigned i = 0; i < 16; i++)
             host.add_midi(i, {uint8_t(0xC0 + i), uint8_t(16 + i)});
         host.add_program(20, int32_t(round % 128));
     }},
    {"more programs than there is room to tell",
     [](Lv2Host& host, unsigned) {
         for (int32_t i = 0; i < 200; i++)
             host.add_program(i % 64, i % 128);
     }},
};

void call_audio(LilvInstance* instance, uint32_t frames) noexcept CALLED_IN_REAL_TIME {
    lilv_instance_run(instance, frames);
}

TEST(Lv2Realtime, TheAudioCallOnlyComputes) {
    const std::string state = Lv2Host(48000, "").saved_text(); // the General MIDI set
    CallbackCounts counts[std::size(PHASES)];
    for (const double rate : {44100.0, 48000.0, 96000.0}) {
        Lv2Host host(rate);
        for (const bool is_counted : {false, true}) { // at first it is warmed up
            std::atomic<bool> is_over{false};
            std::thread beside([&] {
                while (!is_over) {
                    host.restore_text(state);
                    host.saved_text();
                }
            });
            for (size_t phase = 0; phase < std::size(PHASES); phase++) {
                for (const uint32_t frames : {64U, 61U, 1024U, 0U}) {
                    PHASES[phase].prepare(host, frames + unsigned(is_counted));
                    host.prepare_run(frames);
                    const auto play = [&] {
                        CallbackCounts uncounted;
                        const CallbackWatch watch(is_counted ? counts[phase] : uncounted);
                        call_audio(host.get_instance(), frames);
                    };
                    if (!run_without_system_calls(play))
                        play();
                    host.finish_run();
                }
            }
            is_over = true;
            beside.join();
            lilv_instance_deactivate(host.get_instance());
            lilv_instance_activate(host.get_instance());
        }
    }
    for (size_t phase = 0; phase < std::size(PHASES); phase++) {
        EXPECT_EQ(counts[phase].allocations, 0) << PHASES[phase].name;
        EXPECT_EQ(counts[phase].all_locks, 0) << PHASES[phase].name;
        EXPECT_EQ(counts[phase].system_calls, 0)
            << PHASES[phase].name << ": " << counts[phase].last_system_call;
    }
}

} // namespace

} // namespace tarquil
