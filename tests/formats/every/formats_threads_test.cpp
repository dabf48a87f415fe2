// The host's main thread works on a plug-in while its audio thread plays, and instances play at the
// same time; made for the thread sanitizer.

#include <atomic>
#include <thread>

#include "softsynth/parameters/host_parameters.h"
#include "tests/formats/every/every_format.h"

namespace tarquil {

namespace {

using FormatsThreads = EveryFormat;

TEST_P(FormatsThreads, TheMainThreadDoesEverythingItMayWhileAudioRuns) {
    const auto plugin = start_at(rate());
    const std::string state = plugin->save();
    std::atomic<bool> is_over{false};
    std::atomic<bool> is_always_bounded{true};
    std::thread audio([&] {
        for (unsigned block = 0; block < 200; block++) {
            plugin->add(
                {0, {uint8_t(block % 2 == 0 ? 0x90 : 0x80), uint8_t(40 + block % 40), 100}});
            plugin->add({5, {uint8_t(0xC0 + block % 16), uint8_t(block % 128), 0}});
            for (unsigned number = block % 7; number < 128; number += 7) {
                if (find_controller(number) != nullptr && is_automatable_controller(number))
                    plugin->set(number, filter_controller(number, int(block % 128)), block % 64);
            }
            if (block % 10 == 0)
                plugin->add_specials();
            if (!is_bounded(plugin->run(64)))
                is_always_bounded = false;
        }
        is_over = true;
    });
    for (unsigned round = 0; !is_over; round++) {
        plugin->look(round);
        if (round % 2 == 0)
            plugin->save();
        else
            EXPECT_TRUE(plugin->load(state));
    }
    audio.join();
    EXPECT_TRUE(is_always_bounded);
    EXPECT_EQ(plugin->complaint(), "");
}

TEST_P(FormatsThreads, InstancesOnThreadsSoundAsIfAlone) {
    constexpr uint32_t BLOCKS[] = {64, 128, 1024};
    const auto start_gm = [] { return start_at(rate(), ""); };
    std::vector<StereoSound> alone;
    for (const uint32_t block : BLOCKS)
        alone.push_back(play_song(*start_gm(), song_blocks(block, false)));
    std::vector<std::unique_ptr<FormatDriver>> plugins;
    std::vector<StereoSound> together(std::size(BLOCKS));
    std::vector<std::thread> threads;
    for (size_t i = 0; i < std::size(BLOCKS); i++)
        plugins.push_back(start_gm());
    for (size_t i = 0; i < std::size(BLOCKS); i++)
        threads.emplace_back(
            [&, i] { together[i] = play_song(*plugins[i], song_blocks(BLOCKS[i], false)); });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_TRUE(is_bounded(alone[0]));
    EXPECT_TRUE(together == alone);
}

FOR_EVERY_FORMAT(FormatsThreads);

} // namespace

} // namespace tarquil
