// Stands in for ALSA where the build had no headers of it.

#include "standalone/devices.h"

namespace tarquil {

std::unique_ptr<AudioDevice> open_alsa_device(DevicePlayer& /*player*/,
                                              const DeviceChoice& /*choice*/, std::string& reason) {
    reason = "this program was built without ALSA";
    return nullptr;
}

std::vector<DeviceName> list_alsa_devices() {
    return {};
}

} // namespace tarquil
