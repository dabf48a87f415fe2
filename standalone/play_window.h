// The editor's window of the stand-alone program.

#pragma once

#include <memory>
#include <string>

namespace tarquil {

class Player;
struct PlaySettings;
struct SoundState;

class PlayWindow {
  public:
    PlayWindow() = default;
    PlayWindow(const PlayWindow&) = delete;
    PlayWindow& operator=(const PlayWindow&) = delete;
    virtual ~PlayWindow() = default;

    // Events, and what has changed.  False once the user has closed the window.
    virtual bool idle() = 0;

    virtual void show_sound(const SoundState& sound) = 0;

    // The program ends: edits that the user has neither saved nor discarded are kept for the next
    // start.
    virtual void keep_unsaved() = 0;
};

// Null, and a reason, when there is none to be had.  The player and the settings outlive it.
std::unique_ptr<PlayWindow> open_play_window(Player& player, const PlaySettings& settings,
                                             std::string& reason);

} // namespace tarquil
