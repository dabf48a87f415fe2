// Other threads of the host work on the plug-in while it plays; made for the thread sanitizer.

#include <atomic>
#include <thread>

#include <gtest/gtest.h>

#include "tests/support/engine_host.h"
#include "tests/vst/plugin_host.h"

namespace tarquil {

namespace {

TEST(Threads, EverythingMayHappenWhileAudioRuns) {
    PluginHost host(32);
    PluginHost second(32);
    const std::string bank = host.save(false);
    std::atomic<bool> playing{true};
    const auto while_playing = [&](auto&& work) {
        return std::thread([&playing, work] {
            for (int round = 0; playing; round++)
                work(round);
        });
    };
    std::thread workers[] = {
        while_playing([&](int round) {
            for (int32_t i = 0; i < 173; i++)
                host.set(i, float(round % 11) / 10);
        }),
        while_playing([&](int round) {
            for (int32_t i = 172; i >= 0; i--)
                host.set(i, float(round % 7) / 6 + host.get(i) * 0);
        }),
        while_playing([&](int round) {
            host.call(effSetProgram, 0, round % 128);
            char name[] = "renamed";
            host.call(effSetProgramName, 0, 0, name);
            host.text(effGetProgramName);
            host.text(effGetProgramNameIndexed, round % 128);
            host.text(effGetParamDisplay, round % 173);
            host.call(effCopyProgram, round % 16);
        }),
        while_playing([&](int round) {
            if (round % 2 == 0)
                host.save(false);
            else
                host.load(bank, false);
        }),
        while_playing([&](int) { second.render(32, 32); }),
    };
    bool is_always_sound = true;
    for (int block = 0; block < 500; block++) {
        host.midi(block % 2 == 0 ? 0x90 : 0x80, unsigned(40 + block % 40), 100);
        host.midi(0xC0U + unsigned(block % 16), unsigned(block % 128));
        is_always_sound = is_always_sound && is_sound(host.block(32));
    }
    playing = false;
    for (std::thread& worker : workers)
        worker.join();
    EXPECT_TRUE(is_always_sound);
}

} // namespace

} // namespace tarquil
