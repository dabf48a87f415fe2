// What another dialect, bank or set of drums makes of a player's audio call, and the watch itself;
// the formats' calls are watched in tests/formats/every.

#include <unistd.h>

#include <cstdlib>
#include <mutex>
#include <vector>

#include <gtest/gtest.h>

#include "midi/gm/gm_map_file.h"
#include "player/player.h"
#include "tests/vst/callback_watch.h"

namespace tarquil {

namespace {

void call_player(PlayerAudio& audio, float* pcm, uint32_t frames) noexcept CALLED_IN_REAL_TIME {
    audio.follow_edits();
    for (uint8_t channel = 0; channel < 16; channel++) {
        const uint8_t message[] = {uint8_t(0x90U | channel), 40, 100};
        audio.add_message(message, audio.time());
    }
    const uint8_t reset[] = {0xF0, 0x7E, 0x7F, 9, 1, 0xF7};
    audio.add_exclusive(reset, audio.time() + frames / 2);
    audio.set_controller(CTRL_FILTER1_CUTOFF, int(frames % 128), audio.time());
    audio.run(pcm, frames);
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
    std::vector<float> pcm(size_t(2) * 2048);
    CallbackCounts counts;
    const auto play = [&](bool counted) {
        for (const MidiDialect dialect : {MidiDialect::GENERAL_MIDI, MidiDialect::NATIVE}) {
            player.set_dialect(dialect);
            player.set_controller(CTRL_PANNING, 40);
            player.set_bank(player.get_bank());
            player.set_gm_set(set);
            for (const uint32_t frames : {64U, 2048U, 4U}) {
                CallbackCounts uncounted;
                const CallbackWatch watch(counted ? counts : uncounted);
                call_player(player.audio(), pcm.data(), frames);
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
