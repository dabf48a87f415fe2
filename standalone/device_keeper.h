// Keeps a device open: one that has gone is opened again as soon as it is back.

#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "standalone/audio_device.h"

namespace tarquil {

// What a window tells of the sound.
struct SoundState {
    std::string device; // empty: none is open
    uint64_t num_dropouts = 0;
    std::string problem; // why nothing is heard; empty when something is
};

class DeviceKeeper {
  public:
    using Time = std::chrono::steady_clock::time_point;
    static constexpr std::chrono::seconds INTERVAL{1}; // of trials, and of what is said of dropouts

    // `say_line` is told what a user has to know.
    DeviceKeeper(OpenDevice open_device, std::function<void(const std::string&)> say_line);

    // False, and a reason, when there is no device to begin with.
    bool open(std::string& reason);

    // Looks after the device; often enough for a user who waits.
    void poll(Time now);

    [[nodiscard]] SoundState state() const;

    // Of all devices that have been open.
    [[nodiscard]] uint64_t num_dropouts() const;

  private:
    void close();
    void try_again(Time now);
    void tell_dropouts(Time now);

    const OpenDevice open_new;
    const std::function<void(const std::string&)> say;
    std::unique_ptr<AudioDevice> device;
    std::string problem;
    uint64_t earlier_dropouts = 0; // of devices that are closed
    uint64_t told_dropouts = 0;
    Time next_trial;
    Time next_telling;
};

} // namespace tarquil
