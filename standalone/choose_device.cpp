// The device of the user's choice.

#include "standalone/choose_device.h"

#include <algorithm>
#include <utility>

namespace tarquil {

namespace {

std::unique_ptr<AudioDevice> open_one(DevicePlayer& player, const DeviceChoice& choice,
                                      const Listener& listener, std::string& reason) {
    switch (choice.kind) {
    case DeviceKind::JACK:
        return open_jack_device(player, choice, reason);
    case DeviceKind::ALSA:
        return open_alsa_device(player, choice, reason);
    default:
        return open_null_device(player, choice, reason, listener);
    }
}

} // namespace

OpenDevice choose_device(DevicePlayer& player, const DeviceChoice& choice, bool may_be_silent,
                         Listener listener) {
    return [&player, chosen = choice, may_be_silent,
            heard_by = std::move(listener)](std::string& reason) mutable {
        if (chosen.kind != DeviceKind::AUTO)
            return open_one(player, chosen, heard_by, reason);
        std::unique_ptr<AudioDevice> device;
        for (const DeviceKind kind : {DeviceKind::JACK, DeviceKind::ALSA, DeviceKind::SILENT}) {
            if (kind == DeviceKind::SILENT && !may_be_silent)
                break;
            DeviceChoice tried = chosen;
            tried.kind = kind;
            std::string why;
            device = open_one(player, tried, heard_by, why);
            if (device != nullptr) {
                chosen = tried;
                break;
            }
            reason += (reason.empty() ? "" : "; ") + why;
        }
        return device;
    };
}

std::string list_devices() {
    std::vector<DeviceName> devices = list_jack_devices();
    const std::vector<DeviceName> alsa = list_alsa_devices();
    devices.insert(devices.end(), alsa.begin(), alsa.end());
    devices.push_back({"null", "silence, in real time"});
    devices.push_back({"null:fast", "silence, as fast as it goes"});
    devices.push_back({"file:OUT.wav", "a recording, in real time"});
    size_t width = 0;
    for (const DeviceName& device : devices)
        width = std::max(width, device.name.size());
    std::string text;
    for (const DeviceName& device : devices)
        text +=
            device.name + std::string(width - device.name.size() + 2, ' ') + device.meaning + "\n";
    return text;
}

} // namespace tarquil
