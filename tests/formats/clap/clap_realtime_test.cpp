// CLAP's audio calls: whatever a host asks of them, they compute and do nothing else.

#include <gtest/gtest.h>

#include <functional>

#include "tests/formats/clap/clap_host.h"
#include "tests/vst/callback_watch.h"

namespace tarquil {

namespace {

struct Phase {
    const char* name;
    std::function<void(ClapTestHost&)> prepare;
};

const Phase PHASES[] = {
    {"silence", [](ClapTestHost&) {}},
    {"notes of both dialects",
     [](ClapTestHost& host) {
         for (int i = 0; i < 96; i++) {
             host.note(CLAP_EVENT_NOTE_ON, 20 + i, i % 16, unsigned(i % 64), i);
             host.midi({uint8_t(0x90 + i % 16), uint8_t(100 - i), 100}, unsigned(i % 64));
         }
     }},
    {"parameters",
     [](ClapTestHost& host) {
         for (clap_id id = 0; id < 206; id++)
             host.set(id, double(id % 16), id % 64);
         for (clap_id channel = 0; channel < 16; channel++)
             host.set(0x1000 + channel, double(channel * 3), channel);
         host.set(0x1010, 9, 30);
     }},
    {"program changes",
     [](ClapTestHost& host) {
         for (unsigned i = 0; i < 16; i++)
             host.midi({uint8_t(0xC0 + i), uint8_t(16 + i), 0}, i);
     }},
    {"more messages than the queue holds",
     [](ClapTestHost& host) {
         for (unsigned i = 0; i < 17000; i++)
             host.midi({uint8_t(0xB0 + i % 16), uint8_t(i % 120), uint8_t(i % 128)}, i % 64);
     }},
    {"wildcards",
     [](ClapTestHost& host) {
         for (unsigned i = 0; i < 20; i++)
             host.note(i % 2 == 0 ? CLAP_EVENT_NOTE_OFF : CLAP_EVENT_NOTE_CHOKE, -1, -1, i);
     }},
};

void call_audio(ClapTestHost& host, const clap_process& block,
                bool does_reset) noexcept CALLED_IN_REAL_TIME {
    host.plugin->process(host.plugin, &block);
    if (does_reset)
        host.plugin->reset(host.plugin);
}

TEST(ClapRealtime, TheAudioCallsOnlyCompute) {
    ClapTestHost host;
    ASSERT_TRUE(host.activate(48000));
    const std::string state = host.save();
    std::vector<float> left(4096);
    std::vector<float> right(4096);
    float* sides[] = {left.data(), right.data()};
    clap_audio_buffer buffer = {};
    buffer.data32 = sides;
    buffer.channel_count = 2;
    // What is put out needs no memory of the host's.
    const clap_output_events out = {
        .ctx = nullptr,
        .try_push = [](const clap_output_events*, const clap_event_header*) { return true; }};
    std::deque<HostEvent> events[std::size(PHASES)];
    for (size_t phase = 0; phase < std::size(PHASES); phase++) {
        PHASES[phase].prepare(host);
        host.input.swap(events[phase]);
    }
    CallbackCounts counts[std::size(PHASES)];
    const auto play = [&](bool is_counted) {
        for (size_t phase = 0; phase < std::size(PHASES); phase++) {
            for (const uint32_t frames : {64U, 61U, 4096U, 0U}) {
                const clap_input_events in = host.events_in();
                clap_process block = {};
                block.frames_count = frames;
                block.audio_outputs = &buffer;
                block.audio_outputs_count = 1;
                block.in_events = &in;
                block.out_events = &out;
                CallbackCounts uncounted;
                host.input.swap(events[phase]);
                {
                    const CallbackWatch watch(is_counted ? counts[phase] : uncounted);
                    call_audio(host, block, frames == 61);
                }
                host.input.swap(events[phase]);
            }
        }
    };
    play(false); // warm
    ASSERT_TRUE(host.load(state));
    if (!run_without_system_calls([&] { play(true); }))
        play(true);
    for (size_t phase = 0; phase < std::size(PHASES); phase++) {
        EXPECT_EQ(counts[phase].allocations, 0) << PHASES[phase].name;
        EXPECT_EQ(counts[phase].all_locks, 0) << PHASES[phase].name;
        EXPECT_EQ(counts[phase].system_calls, 0)
            << PHASES[phase].name << ": " << counts[phase].last_system_call;
    }
}

} // namespace

} // namespace tarquil
