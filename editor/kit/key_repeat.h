// Tells a key that is held from one that is struck again, where the window system repeats a held
// key as a release and a press at one time.
//
// A release therefore counts only when the events behind it have been seen: from the second look
// after it on.

#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

namespace tarquil {

class KeyRepeat {
  public:
    // `code` names the key, `time_ms` is the window system's.  Calls `let_go` if the key has been
    // released before without having been told yet.  False for a repeat.
    template <typename Function>
    bool press(uint32_t code, uint32_t time_ms, const Function& let_go) {
        const auto found =
            std::find_if(released.begin(), released.end(),
                         [code](const Release& release) { return release.code == code; });
        if (found == released.end())
            return true;
        const bool is_repeat = time_ms - found->time_ms <= SAME_TIME_MS;
        released.erase(found);
        if (!is_repeat)
            let_go(code);
        return !is_repeat;
    }
    void release(uint32_t code, uint32_t time_ms) { released.push_back({code, time_ms, 0}); }

    // Once all events that there are have been handled: calls `let_go` for each key that is.
    template <typename Function> void look(const Function& let_go) {
        for (Release& release : released) {
            if (release.looks++ > 0)
                let_go(release.code);
        }
        std::erase_if(released, [](const Release& release) { return release.looks > 1; });
    }

  private:
    // No finger is as fast.
    static constexpr uint32_t SAME_TIME_MS = 1;

    struct Release {
        uint32_t code = 0;
        uint32_t time_ms = 0;
        int looks = 0;
    };

    std::vector<Release> released;
};

} // namespace tarquil
