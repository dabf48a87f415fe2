// The devices that there are.

#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "standalone/audio_device.h"
#include "standalone/device_choice.h"

namespace tarquil {

class DevicePlayer;

// Each of them plays a player that outlives it, and only this one.  Null, and a reason, when there
// is none that fits the choice.
std::unique_ptr<AudioDevice> open_jack_device(DevicePlayer& player, const DeviceChoice& choice,
                                              std::string& reason);
std::unique_ptr<AudioDevice> open_alsa_device(DevicePlayer& player, const DeviceChoice& choice,
                                              std::string& reason);

// Who hears what a null device plays: called by its thread.
using Listener = std::function<void(const float* left, const float* right, uint32_t frames)>;

// Plays to nobody else.
std::unique_ptr<AudioDevice> open_null_device(DevicePlayer& player, const DeviceChoice& choice,
                                              std::string& reason, Listener listener = nullptr);

// What --device takes, each with a few words for people.
struct DeviceName {
    std::string name;
    std::string meaning;
};
std::vector<DeviceName> list_jack_devices();
std::vector<DeviceName> list_alsa_devices();

} // namespace tarquil
