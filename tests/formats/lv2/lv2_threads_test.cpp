// The host's other threads save and restore the LV2 plug-in while its audio thread plays; made for
// the thread sanitizer.

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <thread>

#include "tests/formats/lv2/lv2_host.h"

namespace tarquil {

namespace {

TEST(Lv2Threads, StatesComeAndGoWhileAudioRuns) {
    Lv2Host host(44100); // whose sound is bounded by 1
    const std::string state = host.saved_text();
    std::atomic<bool> is_over{false};
    std::thread audio([&] {
        for (unsigned block = 0; block < 150; block++) {
            host.add_midi(0,
                          {uint8_t(block % 2 == 0 ? 0x90 : 0x80), uint8_t(40 + block % 40), 100});
            host.add_midi(5, {uint8_t(0xC0 + block % 16), uint8_t(block % 128)});
            host.add_program(9, int32_t(block % 128));
            for (unsigned i = block % 7; i < lv2_controls().size(); i += 7)
                host.control(lv2_controls()[i].number()) =
                    lv2_controls()[i].value(int(block % 128));
            host.run(64);
        }
        is_over = true;
    });
    for (unsigned round = 0; !is_over; round++) {
        if (round % 2 == 0)
            host.saved_text();
        else
            EXPECT_EQ(host.restore_text(state), LV2_STATE_SUCCESS);
    }
    audio.join();
    for (const float sample : host.left)
        ASSERT_LE(std::fabs(sample), 1.0F);
}

} // namespace

} // namespace tarquil
