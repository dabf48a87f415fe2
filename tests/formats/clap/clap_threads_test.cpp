// The host's main thread works on the CLAP plug-in while its audio thread plays; made for the
// thread sanitizer.

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "formats/clap/abi/thread_pool.h"
#include "tests/formats/clap/clap_host.h"

namespace tarquil {

namespace {

TEST(ClapThreads, TheMainThreadDoesEverythingItMayWhileAudioRuns) {
    ClapTestHost host;
    ASSERT_TRUE(host.activate(48000, 64));
    const std::string state = host.save();
    std::atomic<bool> is_over{false};
    std::atomic<bool> is_always_bounded{true};
    std::thread audio([&] {
        for (unsigned block = 0; block < 400; block++) {
            host.midi({uint8_t(block % 2 == 0 ? 0x90 : 0x80), uint8_t(40 + block % 40), 100});
            host.midi({uint8_t(0xC0U + block % 16), uint8_t(block % 128), 0});
            host.note(CLAP_EVENT_NOTE_CHOKE, -1, -1);
            for (clap_id id = block % 7; id < 128; id += 7)
                host.set(id, double(block % 128), block % 64);
            host.set(0x1010, double(block % 128));
            if (block % 10 == 0)
                host.flush();
            if (block % 100 == 99)
                host.plugin->reset(host.plugin);
            const StereoSound sound = host.render(64);
            if (!is_bounded(sound))
                is_always_bounded = false;
        }
        is_over = true;
    });
    for (unsigned round = 0; !is_over; round++) {
        host.idle();
        for (clap_id id = round % 5; id < 128; id += 5) {
            double value = 0;
            if (host.params().get_value(host.plugin, id, &value))
                host.text(id, value);
        }
        if (round % 2 == 0)
            host.save();
        else
            EXPECT_TRUE(host.load(state));
    }
    audio.join();
    EXPECT_TRUE(is_always_bounded);
    EXPECT_EQ(host.wrong_threads, 0);
}

// A host that lends its threads, one for each task.
struct LendingHost {
    static inline const clap_plugin* plugin = nullptr;
    static inline uint32_t num_tasks = 0;
    static inline bool is_generous = true;

    static bool request_exec(const clap_host* /*host*/, uint32_t count) {
        if (!is_generous)
            return false;
        num_tasks += count;
        const auto* pool = static_cast<const ClapPluginThreadPool*>(
            plugin->get_extension(plugin, CLAP_THREAD_POOL));
        std::vector<std::thread> threads;
        for (uint32_t i = 0; i < count; i++)
            threads.emplace_back([=] { pool->exec(plugin, i); });
        for (std::thread& thread : threads)
            thread.join();
        return true;
    }

    static const void* find(const std::string& id) {
        static constexpr ClapHostThreadPool POOL = {.request_exec = request_exec};
        return id == CLAP_THREAD_POOL ? &POOL : nullptr;
    }
};

// Every program has a group of 255 copies.
std::string heavy_state() {
    HostedPlayer player;
    for (unsigned program = 0; program < MAX_INSTRUMENTS; program++) {
        player.player().set_edited_program(program);
        player.player().set_controller(CTRL_OSC1_MULTI_COUNT, 127);
    }
    return player.save_state();
}

TEST(ClapThreads, TheHostsThreadsGiveTheBytesOfOne) {
    const std::string state = heavy_state();
    const std::vector<uint32_t> blocks = song_blocks(512, true);
    const StereoSound alone = hosted_song(44100, blocks, state);
    for (const bool is_generous : {true, false}) {
        ClapTestHost host(false, LendingHost::find, state);
        LendingHost::plugin = host.plugin;
        LendingHost::num_tasks = 0;
        LendingHost::is_generous = is_generous;
        ASSERT_TRUE(host.activate(44100));
        const StereoSound sound = render_song(
            blocks, [&](const auto& messages, float* left, float* right, uint32_t frames) {
                for (const SongMessage& message : messages)
                    host.midi(message.bytes, message.frame);
                host.process(left, right, frames);
            });
        EXPECT_TRUE(sound == alone) << is_generous;
        if (is_generous && std::thread::hardware_concurrency() > 1) {
            EXPECT_GT(LendingHost::num_tasks, 0U);
        }
        // What the host calls without having been asked does nothing.
        host.get<ClapPluginThreadPool>(CLAP_THREAD_POOL).exec(host.plugin, 0);
    }
}

} // namespace

} // namespace tarquil
