// Stands in for JACK where the build had no headers of it.

#include "standalone/devices.h"

namespace tarquil {

std::unique_ptr<AudioDevice> open_jack_device(DevicePlayer& /*player*/,
                                              const DeviceChoice& /*choice*/, std::string& reason) {
    reason = "this program was built without JACK";
    return nullptr;
}

std::vector<DeviceName> list_jack_devices() {
    return {};
}

} // namespace tarquil
