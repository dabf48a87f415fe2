// Where the stand-alone program's sound goes and its notes come from.

#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace tarquil {

// Plays a DevicePlayer on a thread of its own from its making to its end.
class AudioDevice {
  public:
    AudioDevice() = default;
    AudioDevice(const AudioDevice&) = delete;
    AudioDevice& operator=(const AudioDevice&) = delete;
    virtual ~AudioDevice() = default;

    // For people: "JACK, 256 frames at 48000 Hz".
    [[nodiscard]] virtual std::string name() const = 0;
    // It has gone, or has changed so much that it has to be opened anew.
    [[nodiscard]] virtual bool is_lost() const = 0;
    // How often it had to wait for the sound.
    [[nodiscard]] virtual uint32_t num_dropouts() const = 0;
};

// Null, and a reason, when there is no such device.
using OpenDevice = std::function<std::unique_ptr<AudioDevice>(std::string& reason)>;

} // namespace tarquil
