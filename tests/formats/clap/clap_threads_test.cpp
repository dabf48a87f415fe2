// The CLAP plug-in on the host's threads.

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "formats/clap/abi/thread_pool.h"
#include "tests/formats/clap/clap_host.h"

namespace tarquil {

namespace {

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
