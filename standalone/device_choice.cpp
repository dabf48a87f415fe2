// Which device the user wants, and how.

#include "standalone/device_choice.h"

#include <charconv>
#include <string_view>

#include "common/failure.h"

namespace tarquil {

namespace {

constexpr std::string_view ALSA_PREFIX = "alsa:";
constexpr std::string_view FILE_PREFIX = "file:";

uint32_t read_within(const char* option, const std::string& text, uint32_t first, uint32_t last,
                     const char* unit) {
    uint32_t number = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stop != end || number < first || number > last)
        throw BadInput(std::string(option) + " " + text + ": not a whole number of " + unit +
                       " from " + std::to_string(first) + " to " + std::to_string(last));
    return number;
}

} // namespace

void parse_device(const std::string& text, DeviceChoice& choice) {
    if (text == "jack") {
        choice.kind = DeviceKind::JACK;
    } else if (text == "alsa") {
        choice.kind = DeviceKind::ALSA;
    } else if (text.starts_with(ALSA_PREFIX) && text.size() > ALSA_PREFIX.size()) {
        choice.kind = DeviceKind::ALSA;
        choice.alsa_name = text.substr(ALSA_PREFIX.size());
    } else if (text == "null") {
        choice.kind = DeviceKind::SILENT;
    } else if (text == "null:fast") {
        choice.kind = DeviceKind::FAST;
    } else if (text.starts_with(FILE_PREFIX) && text.size() > FILE_PREFIX.size()) {
        choice.kind = DeviceKind::RECORDED;
        choice.file = text.substr(FILE_PREFIX.size());
    } else {
        throw BadInput("--device " + text +
                       ": not jack, alsa, alsa:NAME, null, null:fast or file:OUT.wav; --list shows "
                       "the names");
    }
}

uint32_t parse_device_rate(const std::string& text) {
    return read_within("--rate", text, 8000, 384000, "Hz");
}

uint32_t parse_period(const std::string& text) {
    return read_within("--period", text, 16, 8192, "frames");
}

} // namespace tarquil
