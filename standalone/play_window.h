// The editor's window of the stand-alone program.

#pragma once

#include <memory>
#include <string>

namespace tarquil {

class Player;

class PlayWindow {
  public:
    PlayWindow() = default;
    PlayWindow(const PlayWindow&) = delete;
    PlayWindow& operator=(const PlayWindow&) = delete;
    virtual ~PlayWindow() = default;

    // Events, and what has changed.  False once the user has closed the window.
    virtual bool idle() = 0;
};

// Null, and a reason, when there is none to be had.  The player outlives it.
std::unique_ptr<PlayWindow> open_play_window(Player& player, std::string& reason);

} // namespace tarquil
