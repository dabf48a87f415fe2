// Keeps a device open.

#include "standalone/device_keeper.h"

#include <utility>

namespace tarquil {

DeviceKeeper::DeviceKeeper(OpenDevice open_device, std::function<void(const std::string&)> say_line)
    : open_new(std::move(open_device)), say(std::move(say_line)) {}

bool DeviceKeeper::open(std::string& reason) {
    device = open_new(reason);
    if (device == nullptr)
        return false;
    say("sound: " + device->name());
    problem = reason;
    return true;
}

SoundState DeviceKeeper::state() const {
    return {device != nullptr ? device->name() : "", num_dropouts(), problem};
}

void DeviceKeeper::poll(Time now) {
    if (device != nullptr && device->is_lost()) {
        problem = "the sound device is gone (" + device->name() + "); waiting for it";
        say(problem);
        close();
        next_trial = now + INTERVAL;
    }
    if (device == nullptr && now >= next_trial)
        try_again(now);
    tell_dropouts(now);
}

void DeviceKeeper::close() {
    earlier_dropouts += device->num_dropouts();
    device.reset();
}

void DeviceKeeper::try_again(Time now) {
    std::string reason;
    open(reason);
    next_trial = now + INTERVAL;
}

void DeviceKeeper::tell_dropouts(Time now) {
    const uint64_t count = num_dropouts();
    if (count == told_dropouts || now < next_telling)
        return;
    say("dropouts so far: " + std::to_string(count));
    told_dropouts = count;
    next_telling = now + INTERVAL;
}

uint64_t DeviceKeeper::num_dropouts() const {
    return earlier_dropouts + (device != nullptr ? device->num_dropouts() : 0);
}

} // namespace tarquil
