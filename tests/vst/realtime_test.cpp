// The audio callback: whatever was asked of it, it computes and does nothing else.

#include <unistd.h>

#include <cstdlib>
#include <functional>
#include <mutex>

#include <gtest/gtest.h>

#include "midi/gm/gm_map_file.h"
#include "player/player.h"
#include "player/quantum_stream.h"
#include "tests/support/engine_host.h"
#include "tests/vst/callback_watch.h"
#include "tests/vst/plugin_host.h"

namespace tarquil {

namespace {

void set_by_name(PluginHost& host, const std::string& name, int byte) {
    for (int32_t i = 0; i < 173; i++) {
        if (host.text(effGetParamName, i) == name)
            host.set(i, float(byte) / 127);
    }
}

// A different heavy sound in each of the first programs.
void make_sounds(PluginHost& host) {
    for (int32_t program = 0; program < 32; program++) {
        host.call(effSetProgram, 0, program);
        set_by_name(host, "filter1_type", program % 25);
        set_by_name(host, "filter1_depth", program % 5);
        set_by_name(host, "osc1_type", program % 6);
        set_by_name(host, "osc2_type", 5);
        set_by_name(host, "osc1_multi_count", program * 4);
        set_by_name(host, "chanfx1_type", program % 6);
        set_by_name(host, "chanfx1b_type", (program + 1) % 6);
        set_by_name(host, "chanfx2_type", program % 4);
        set_by_name(host, "chan_filter1_type", program % 9);
        set_by_name(host, "cutoff1_influence1_source", program % 10);
        set_by_name(host, "osc2_influence_source", program % 6);
        set_by_name(host, "aux1_level", 90);
        set_by_name(host, "aux2_level", 90);
    }
}

struct Phase {
    const char* name;
    std::function<void(PluginHost&)> prepare;
};

const Phase PHASES[] = {
    {"silence", [](PluginHost&) {}},
    {"notes",
     [](PluginHost& host) {
         for (unsigned i = 0; i < 96; i++)
             host.midi(0x90 + i % 16, 20 + i, 100, int32_t(i % 64));
     }},
    {"program changes",
     [](PluginHost& host) {
         for (unsigned i = 0; i < 16; i++)
             host.midi(0xC0 + i, 16 + i, 0, int32_t(i));
     }},
    {"bends and controllers",
     [](PluginHost& host) {
         for (unsigned i = 0; i < 2000; i++) {
             host.midi(0xE0 + i % 16, i % 128, i % 128, int32_t(i % 64));
             host.midi(0xB0 + i % 16, i % 206, i % 128, int32_t(i % 64));
         }
     }},
    {"a full queue",
     [](PluginHost& host) {
         for (unsigned i = 0; i < 17000; i++)
             host.midi(0xB0 + i % 2, 62 + i % 2, i % 128, int32_t((i * 7) % 64));
     }},
    {"a full queue on one controller",
     [](PluginHost& host) {
         for (unsigned i = 0; i < 17000; i++)
             host.midi(0xB0, 7, i % 128, int32_t(i % 64));
     }},
    {"the retrigger",
     [](PluginHost& host) {
         host.midi(0xB0, 55, 65);
         host.midi(0xB0, 54, 20);
     }},
    {"automation", [](PluginHost&) {}},
    {"the end of all notes",
     [](PluginHost& host) {
         for (unsigned i = 0; i < 16; i++)
             host.midi(0xB0 + i, 123, 0);
     }},
};

void call_audio(AEffect* effect, VstEvents* events, float** outputs, int32_t frames,
                bool automate) noexcept CALLED_IN_REAL_TIME {
    effect->dispatcher(effect, effProcessEvents, 0, 0, events, 0.0F);
    for (int32_t i = 0; automate && i < 173; i++)
        effect->setParameter(effect, i, float(i % 16) / 16);
    effect->processReplacing(effect, nullptr, outputs, frames);
}

TEST(Realtime, TheCallbackOnlyComputes) {
    PluginHost host(4096);
    make_sounds(host);
    std::vector<float> left(4096);
    std::vector<float> right(4096);
    float* outputs[] = {left.data(), right.data()};
    struct Call {
        size_t phase = 0;
        PluginHost::Batch batch;
        int32_t frames = 0;
    };
    std::vector<Call> calls;
    for (size_t phase = 0; phase < std::size(PHASES); phase++) {
        for (const int32_t frames : {64, 61, 4096, 5}) {
            PHASES[phase].prepare(host);
            calls.push_back({phase, host.take_events(), frames});
        }
    }
    CallbackCounts counts[std::size(PHASES)];
    const auto play = [&](bool counted) {
        for (const Call& call : calls) {
            const bool automate = std::string_view(PHASES[call.phase].name) == "automation";
            CallbackCounts uncounted;
            const CallbackWatch watch(counted ? counts[call.phase] : uncounted);
            call_audio(host.effect, call.batch.events, outputs, call.frames, automate);
        }
    };
    play(false); // warm
    ASSERT_TRUE(host.load(host.save(false), false));
    if (!run_without_system_calls([&] { play(true); }))
        play(true);
    for (size_t phase = 0; phase < std::size(PHASES); phase++) {
        EXPECT_EQ(counts[phase].allocations, 0) << PHASES[phase].name;
        EXPECT_EQ(counts[phase].locks, 0) << PHASES[phase].name;
        EXPECT_EQ(counts[phase].system_calls, 0)
            << PHASES[phase].name << ": " << counts[phase].last_system_call;
    }
}

void call_player(Player& player, QuantumStream& stream, float* left, float* right,
                 uint32_t frames) noexcept CALLED_IN_REAL_TIME {
    PlayerAudio& audio = player.audio();
    audio.follow_edits();
    for (uint32_t i = 0; i < 96; i++) {
        const uint32_t time = stream.event_time(i % frames);
        const auto channel = uint8_t(i % 16);
        const uint8_t messages[][3] = {{uint8_t(0xC0U | channel), uint8_t(i), 0},
                                       {uint8_t(0x90U | channel), uint8_t(30 + i % 60), 100},
                                       {uint8_t(0xB0U | channel), 1, 100},
                                       {uint8_t(0xB0U | channel), 7, uint8_t(40 + i % 80)},
                                       {uint8_t(0xE0U | channel), 0, uint8_t(i % 128)},
                                       {uint8_t(0xB0U | channel), 64, uint8_t(i % 2 * 127)},
                                       {uint8_t(0x80U | channel), uint8_t(30 + i % 60), 0}};
        for (const auto& message : messages)
            audio.add_message(message, time);
    }
    const uint8_t reset[] = {0xF0, 0x7E, 0x7F, 9, 1, 0xF7};
    audio.add_exclusive(reset, stream.event_time(frames / 2));
    audio.set_controller(CTRL_FILTER1_CUTOFF, int(frames % 128), stream.event_time(0));
    stream.render(left, right, frames);
}

// Both dialects in turn, with drums, edits and another bank meanwhile.
TEST(Realtime, GeneralMidiAndTheSwitchToItOnlyCompute) {
    const auto set = std::make_shared<GmSet>();
    set->drums = std::make_unique<TarqSettings>();
    ASSERT_EQ(load_gm_map_from_string(set->map, "family = all\nk00_040 = all 1 60 100 64 400\n"
                                                "p003_env1_decay = key -20 vel 5\n"
                                                "p003_vibrato = 5 20 0.2 0.1\n"),
              "");
    Player player;
    player.set_gm_set(set);
    player.start();
    QuantumStream stream(player.audio());
    ASSERT_TRUE(stream.activate(48000.0));
    std::vector<float> left(2048);
    std::vector<float> right(2048);
    CallbackCounts counts;
    const auto play = [&](bool counted) {
        for (const MidiDialect dialect : {MidiDialect::GENERAL_MIDI, MidiDialect::NATIVE}) {
            player.set_dialect(dialect);
            player.set_controller(CTRL_PANNING, 40);
            player.set_bank(player.get_bank());
            player.set_gm_set(set);
            for (const uint32_t frames : {64U, 61U, 2048U, 5U}) {
                CallbackCounts uncounted;
                const CallbackWatch watch(counted ? counts : uncounted);
                call_player(player, stream, left.data(), right.data(), frames);
            }
        }
    };
    play(false);
    play(true);
    EXPECT_EQ(counts.allocations, 0);
    EXPECT_EQ(counts.locks, 0);
}

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
