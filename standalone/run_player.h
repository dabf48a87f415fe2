// The stand-alone program while it plays.

#pragma once

#include <functional>
#include <string>

#include "standalone/device_choice.h"
#include "standalone/device_player.h"
#include "standalone/devices.h"

namespace tarquil {

struct PlaySettings {
    DeviceChoice device;
    bool has_window = true;
    std::string bank_path; // the file that the player's bank came from, empty for none
    Listener listener{};   // of a device that plays to nobody else
    // Told what a user has to know, a line each.
    std::function<void(const std::string&)> say;
};

// Plays until the window is closed, without one until the song's sound has ended, or until the
// process is told to end.  A Failure when there is no window or no device.
void run_player(DevicePlayer& player, const PlaySettings& settings);

} // namespace tarquil
