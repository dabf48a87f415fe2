// The host's main thread works on the VST 3 plug-in while its audio thread plays; made for the
// thread sanitizer.

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "tests/formats/vst3/vst3_host.h"

namespace tarquil::vst3 {

namespace {

TEST(Vst3Threads, TheMainThreadDoesEverythingItMayWhileAudioRuns) {
    Vst3Host host(48000);
    const std::string state = host.save();
    std::atomic<bool> is_over{false};
    std::atomic<bool> is_always_bounded{true};
    std::thread audio([&] {
        for (unsigned block = 0; block < 150; block++) {
            host.add_message(0, block % 2 == 0 ? 0x90 : 0x80, uint8_t(40 + block % 40), 100);
            host.add_message(5, uint8_t(0xC0 + block % 16), uint8_t(block % 128), 0);
            for (ParameterId id = block % 7; id < 128; id += 7)
                host.changes.add(id, int32_t(block % 64), double(block % 128) / 127);
            StereoSound sound{std::vector<float>(64), std::vector<float>(64)};
            host.run(sound.left.data(), sound.right.data(), 64);
            if (!is_bounded(sound))
                is_always_bounded = false;
        }
        is_over = true;
    });
    for (unsigned round = 0; !is_over; round++) {
        for (ParameterId id = round % 5; id < 128; id += 5) {
            String128 text;
            const double value = host.controller->get_normalized(id);
            host.controller->get_parameter_text(id, value, text);
            host.controller->set_normalized(id, double(round % 10) / 9);
        }
        String128 name;
        host.units->get_program_name(1, int32_t(round % 128), name);
        if (round % 2 == 0)
            host.save();
        else
            EXPECT_EQ(host.load(state), OK);
    }
    audio.join();
    EXPECT_TRUE(is_always_bounded);
}

} // namespace

} // namespace tarquil::vst3
