// Which device the user wants, and how.

#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tarquil {

enum class DeviceKind {
    AUTO, // JACK, else ALSA
    JACK,
    ALSA,
    SILENT,   // in real time
    FAST,     // silent too, as fast as it goes
    RECORDED, // in real time, into a file
};

struct DeviceChoice {
    DeviceKind kind = DeviceKind::AUTO;
    std::string alsa_name = "default";
    std::string file{};             // of RECORDED
    std::optional<uint32_t> rate;   // Hz; else the device's own
    std::optional<uint32_t> period; // frames of a block; else what is usual for the device
};

// "jack", "alsa", "alsa:NAME", "null", "null:fast" or "file:PATH".  BadInput for anything else.
void parse_device(const std::string& text, DeviceChoice& choice);
// 8000..384000 Hz.
uint32_t parse_device_rate(const std::string& text);
// 16..8192 frames.
uint32_t parse_period(const std::string& text);

} // namespace tarquil
