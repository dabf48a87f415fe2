// VST 3's audio call: whatever a host asks of it, and whatever happens on other threads meanwhile,
// it computes and does nothing else.

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <thread>

#include "formats/vst3/parameters.h"
#include "tests/formats/vst3/vst3_host.h"
#include "tests/vst/callback_watch.h"

namespace tarquil::vst3 {

namespace {

constexpr int32_t MAX_FRAMES = 1024;

struct Phase {
    const char* name;
    std::function<void(Vst3Host&)> prepare;
};

const Phase PHASES[] = {
    {"silence", [](Vst3Host&) {}},
    {"notes",
     [](Vst3Host& host) {
         for (int32_t i = 0; i < 96; i++)
             host.add_message(i % 64, uint8_t(0x90 + i % 16), uint8_t(20 + i), 100);
     }},
    {"parameters and messages as parameters",
     [](Vst3Host& host) {
         for (ParameterId id = 0; id < 206; id++)
             host.changes.add(id, int32_t(id % 64), double(id % 16) / 15);
         for (int32_t i = 0; i < 400; i++)
             host.add_message(i % 64, uint8_t((i % 2 == 0 ? 0xB0 : 0xE0) + i % 16), 74,
                              uint8_t(i % 128));
     }},
    {"program changes",
     [](Vst3Host& host) {
         for (int32_t i = 0; i < 16; i++)
             host.add_message(i, uint8_t(0xC0 + i), uint8_t(16 + i), 0);
         host.changes.add(EDITED_PROGRAM_ID, 20, 0.5);
     }},
    {"more than there is room for",
     [](Vst3Host& host) {
         for (int32_t i = 0; i < 17000; i++)
             host.add_message(i % 64, uint8_t(i % 2 == 0 ? 0x90 : 0x80), uint8_t(i / 2 % 128), 90);
     }},
};

void call_audio(AudioProcessor& processor, ProcessData& data) noexcept CALLED_IN_REAL_TIME {
    processor.process(&data);
}

struct Lists {
    HostEvents events;
    HostChanges changes;
};

// What the host's other threads may do at any time.
void work_beside(Vst3Host& host, const std::string& state, unsigned round) {
    for (ParameterId id = round % 5; id < 128; id += 5)
        host.controller->set_normalized(id, double(round % 10) / 9);
    host.save(); // brings them to the player
    host.load(state);
}

TEST(Vst3Realtime, TheAudioCallOnlyComputes) {
    Vst3Host host(48000);
    const std::string state = Vst3Host(0, "").save(); // the General MIDI set
    Lists lists[std::size(PHASES)];
    for (size_t phase = 0; phase < std::size(PHASES); phase++) {
        PHASES[phase].prepare(host);
        std::swap(host.events.events, lists[phase].events.events);
        std::swap(host.changes.queues, lists[phase].changes.queues);
    }
    std::vector<float> left(MAX_FRAMES);
    std::vector<float> right(MAX_FRAMES);
    float* sides[] = {left.data(), right.data()};
    AudioBuffers out{2, 0, {sides}};
    CallbackCounts counts[std::size(PHASES)];
    const auto play = [&] {
        for (size_t phase = 0; phase < std::size(PHASES); phase++) {
            for (const int32_t frames : {64, 61, MAX_FRAMES, 0}) {
                ProcessData data{};
                data.sample_size = SAMPLE_32;
                data.num_frames = frames;
                data.num_outputs = 1;
                data.outputs = &out;
                data.input_changes = &lists[phase].changes;
                data.input_events = &lists[phase].events;
                const CallbackWatch watch(counts[phase]);
                call_audio(*host.processor.get(), data);
            }
        }
    };
    for (const bool is_counted : {false, true}) { // at first it is warmed up
        for (const double rate : {44100.0, 48000.0, 96000.0}) {
            ASSERT_EQ(host.setup(rate), OK);
            std::atomic<bool> is_over{false};
            std::thread beside([&] {
                for (unsigned round = 0; !is_over; round++)
                    work_beside(host, state, round);
            });
            if (!run_without_system_calls(play))
                play();
            is_over = true;
            beside.join();
            if (!is_counted)
                std::fill(std::begin(counts), std::end(counts), CallbackCounts());
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

} // namespace tarquil::vst3
