// What the hosts with windows do alike, whatever the format: their modes, sound meanwhile, and what
// they look for.
//
// A `Plugin` has open(), close(), which says what has gone wrong or null, idle(), save(), and
// `parent`, the host's window.

#pragma once

#include <poll.h>
#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <thread>

#include "tests/windows/screen.h"

namespace tarquil {

// Calls play(number of the block) on a thread of its own, again and again.
class SoundMeanwhile {
  public:
    explicit SoundMeanwhile(const std::function<void(unsigned block)>& play)
        : thread([this, play] {
              for (unsigned block = 0; is_playing; block++)
                  play(block);
          }) {}
    SoundMeanwhile(const SoundMeanwhile&) = delete;
    SoundMeanwhile& operator=(const SoundMeanwhile&) = delete;
    ~SoundMeanwhile() {
        is_playing = false;
        thread.join();
    }

  private:
    std::atomic<bool> is_playing{true};
    std::thread thread;
};

// Descriptors and threads after the first opening and closing of a window, which loads fonts that
// stay, and after the last one.
class GrowthCheck {
  public:
    void note_first() {
        descriptors = count_entries("fd");
        threads = count_entries("task");
    }
    // Null when nothing is left.
    [[nodiscard]] const char* find_growth() const {
        if (count_entries("fd") != descriptors)
            return "file descriptors are left open";
        if (count_entries("task") != threads)
            return "a thread is left";
        return nullptr;
    }

  private:
    // Of the process, in /proc.
    static long count_entries(const char* kind) {
        const auto entries =
            std::filesystem::directory_iterator(std::filesystem::path("/proc/self") / kind);
        return std::distance(begin(entries), end(entries));
    }

    long descriptors = 0;
    long threads = 0;
};

// Opens and closes the editor; look(round) says what is wrong while it is open, or null.
template <typename Plugin, typename Look>
int open_and_close(Screen& screen, Plugin& plugin, int cycles, const Look& look) {
    GrowthCheck growth;
    for (int i = 0; i < cycles; i++) {
        if (!plugin.open())
            return fail("the editor does not open");
        if (screen.children(plugin.parent).size() != 1)
            return fail("the editor's window is not in the host's");
        plugin.idle();
        plugin.idle();
        const char* const wrong = look(i);
        const char* const left = plugin.close();
        if (wrong != nullptr || left != nullptr)
            return fail(wrong != nullptr ? wrong : left);
        if (i == 0)
            growth.note_first();
    }
    if (const char* const left = growth.find_growth())
        return fail(left);
    std::printf("ok %d openings and closings, no window, timer, thread or descriptor left\n",
                cycles);
    return 0;
}

// The window takes the sizes of its shape that the host sets, and those only.  The plug-in fits a
// size, sets it, and takes_size() within the seconds that a busy screen may need.
template <typename Plugin> const char* try_host_sizes(Plugin& plugin) {
    for (const auto& [width, height] :
         {std::pair(1300, 1300), std::pair(3000, 900), std::pair(1, 1), std::pair(99999, 99999)}) {
        const auto fitting = plugin.fit({width, height});
        if (plugin.fit(fitting) != fitting)
            return "a size that fits does not stay";
        if (!plugin.set_size(fitting))
            return "a size that fits is not taken";
        if (!plugin.takes_size(fitting))
            return "the size is not the one that was set";
    }
    return nullptr;
}

// What the host has been told of the user's edits.
struct ToldEdits {
    int begun = 0;
    int automated = 0;
    int ended = 0;
};

// A slow machine's user needs longer.  False once the standard input has ended: who drives the host
// has done what it wanted to.
inline bool is_user_at_work() {
    pollfd input{STDIN_FILENO, POLLIN, 0};
    char unused = 0;
    return poll(&input, 1, 0) == 0 || read(STDIN_FILENO, &unused, 1) > 0;
}

// Shows the editor until the input ends, calling each_round(number); read(told) counts, and says
// what is wrong or null.
template <typename Plugin, typename EachRound, typename Read>
int show_to_a_user(Plugin& plugin, const EachRound& each_round, const Read& read) {
    if (!plugin.open())
        return fail("the editor does not open");
    std::printf("window %lu\n", plugin.parent);
    std::fflush(stdout);
    const std::string before = plugin.save();
    for (int round = 0; is_user_at_work(); round++) {
        plugin.idle();
        each_round(round);
    }
    ToldEdits told;
    const char* const wrong = read(told);
    const char* const left = plugin.close();
    if (wrong != nullptr || left != nullptr)
        return fail(wrong != nullptr ? wrong : left);
    std::printf("begun %d automated %d ended %d, bank %s\n", told.begun, told.automated, told.ended,
                plugin.save() == before ? "as before" : "changed");
    return 0;
}

// The first argument is the mode, the second the number that it is given.
inline int run_mode(int argc, char** argv,
                    const std::map<std::string, int (*)(int number)>& modes) {
    const auto mode = modes.find(argc > 1 ? argv[1] : "");
    if (mode == modes.end())
        return fail("usage: HOST MODE [NUMBER], as its source says");
    return mode->second(argc > 2 ? std::atoi(argv[2]) : 0);
}

} // namespace tarquil
