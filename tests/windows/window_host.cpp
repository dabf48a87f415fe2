// A host with windows: opens the plug-in's editor in windows of its own, plays and automates
// meanwhile, and counts what is left behind.
//
//   window_host cycles N [I]   opens and closes the editor N times, with I idle calls between
//   window_host three          three instances with audio running, a parent window destroyed first
//   window_host eight          eight instances that play, are automated, load, save, change
//   programs
//                              and show their editors at once; made for the thread sanitizer
//   window_host play           one editor for a user (or xdotool) until the input ends; prints
//                              what the host was told

#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <thread>
#include <vector>

#include "tests/windows/edited_plugin.h"
#include "tests/windows/process_entries.h"
#include "tests/windows/user_at_work.h"

namespace tarquil {

namespace {

std::atomic<int> begun{0};
std::atomic<int> automated{0};
std::atomic<int> ended{0};

intptr_t answer(AEffect*, int32_t opcode, int32_t, intptr_t, void*, float) {
    switch (opcode) {
    case audioMasterVersion:
        return kVstVersion;
    case audioMasterBeginEdit:
        begun++;
        return 1;
    case audioMasterAutomate:
        automated++;
        return 1;
    case audioMasterEndEdit:
        ended++;
        return 1;
    default:
        return 0;
    }
}

int run_cycles(int cycles, int idles) {
    Screen screen;
    EditedPlugin plugin(screen, 0, answer);
    GrowthCheck growth;
    for (int i = 0; i < cycles; i++) {
        if (!plugin.open())
            return fail("the editor does not open");
        if (screen.children(plugin.parent).size() != 1)
            return fail("the editor's window is not in the host's");
        plugin.idle(idles);
        plugin.close();
        if (screen.children(plugin.parent).size() != 0)
            return fail("a window is left");
        if (i == 0)
            growth.note_first();
    }
    if (const char* const left = growth.find_growth())
        return fail(left);
    std::printf("ok %d openings and closings, no window, thread or descriptor left\n", cycles);
    return 0;
}

int run_three() {
    Screen screen;
    {
        std::unique_ptr<EditedPlugin> plugins[3];
        for (int i = 0; i < 3; i++) {
            plugins[i] = std::make_unique<EditedPlugin>(screen, 100 * i, answer);
            if (!plugins[i]->open())
                return fail("an editor does not open");
        }
        std::atomic<bool> playing{true};
        std::thread audio([&] {
            for (unsigned block = 0; playing; block++) {
                for (auto& plugin : plugins) {
                    plugin->host.midi(0x90, 40 + block % 40, 100);
                    plugin->host.midi(0x80, 40 + (block + 20) % 40);
                    plugin->host.block(256);
                }
            }
        });
        for (int round = 0; round < 200; round++) {
            for (auto& plugin : plugins) {
                for (int32_t i = 0; i < 5; i++)
                    plugin->host.set(1 + (round * 5 + i) % 172, float(round % 10) / 9);
                plugin->host.call(effSetProgram, 0, round % 4);
                plugin->host.call(effEditIdle);
            }
            if (round == 100) {
                // Some hosts destroy their window first.
                screen.destroy(plugins[0]->parent);
                plugins[0]->parent = 0;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        for (auto& plugin : plugins)
            plugin->close();
        playing = false;
        audio.join();
    }
    std::puts("ok three editors with audio, 1000 automated values, a parent that went first");
    return 0;
}

int run_eight() {
    constexpr int COUNT = 8;
    constexpr int ROUNDS = COUNT; // each is closed and opened once
    Screen screen;
    std::vector<std::unique_ptr<EditedPlugin>> plugins;
    for (int i = 0; i < COUNT; i++)
        plugins.push_back(std::make_unique<EditedPlugin>(screen, 100 * i, answer));
    const std::string bank = plugins[0]->host.save(false);
    std::atomic<bool> is_over{false};
    std::atomic<bool> is_sound{true};
    std::vector<std::thread> threads;
    for (auto& plugin : plugins) {
        threads.emplace_back([&is_over, &is_sound, &host = plugin->host] {
            for (unsigned block = 0; !is_over; block++) {
                host.midi(block % 2 == 0 ? 0x90 : 0x80, 40 + block % 40, 100);
                host.midi(0xC0 + block % 16, block % 128);
                for (const float sample : host.block(64)) {
                    if (!(std::fabs(sample) <= 1.0F))
                        is_sound = false;
                }
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            }
        });
    }
    // Each of these goes round all instances.
    const auto work = [&](auto&& on_one) {
        threads.emplace_back([&, on_one] {
            for (int round = 0; !is_over; round++) {
                on_one(plugins[size_t(round % COUNT)]->host, round / COUNT);
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            }
        });
    };
    work([](PluginHost& host, int round) {
        for (int32_t i = 0; i < 173; i++)
            host.set(i, float((round + i) % 11) / 10);
    });
    work([&](PluginHost& host, int round) {
        if (round % 2 == 0)
            host.save(false);
        else
            host.load(bank, false);
    });
    work([](PluginHost& host, int round) {
        host.call(effSetProgram, 0, round % 128);
        char name[] = "renamed";
        host.call(effSetProgramName, 0, 0, name);
        host.text(effGetProgramNameIndexed, round % 128);
        host.text(effGetParamDisplay, round % 173);
    });
    bool is_open = true;
    for (int round = 0; round < ROUNDS; round++) {
        EditedPlugin& plugin = *plugins[size_t(round % COUNT)];
        plugin.close();
        is_open = is_open && plugin.open();
        for (auto& shown : plugins)
            shown->host.call(effEditIdle);
        pause_host();
    }
    for (auto& plugin : plugins)
        plugin->close();
    is_over = true;
    for (std::thread& thread : threads)
        thread.join();
    if (!is_open)
        return fail("an editor does not open");
    if (!is_sound)
        return fail("the sound has lost its bounds");
    std::printf("ok %d instances with audio, automation, loads, saves, programs and windows\n",
                COUNT);
    return 0;
}

int run_for_a_user() {
    Screen screen;
    EditedPlugin plugin(screen, 0, answer);
    if (!plugin.open())
        return fail("the editor does not open");
    std::printf("window %lu\n", plugin.parent);
    std::fflush(stdout);
    const std::string before = plugin.host.save(false);
    while (is_user_at_work())
        plugin.idle(1);
    plugin.close();
    std::printf("begun %d automated %d ended %d, bank %s\n", begun.load(), automated.load(),
                ended.load(), plugin.host.save(false) == before ? "as before" : "changed");
    return 0;
}

} // namespace

} // namespace tarquil

int main(int argc, char** argv) {
    using namespace tarquil;
    const std::string mode = argc > 1 ? argv[1] : "";
    const auto number = [&](int index, int usual) {
        return argc > index ? int(std::strtol(argv[index], nullptr, 10)) : usual;
    };
    if (mode == "cycles" && (argc == 3 || argc == 4))
        return run_cycles(number(2, 0), number(3, 2));
    if (mode == "three")
        return run_three();
    if (mode == "eight")
        return run_eight();
    if (mode == "play")
        return run_for_a_user();
    return fail("usage: window_host cycles N [I] | three | eight | play");
}
