// The host's main thread works on the CLAP plug-in while its audio thread plays; made for the
// thread sanitizer.

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

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

} // namespace

} // namespace tarquil
