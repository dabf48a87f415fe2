// Plays to nobody but a listener, so that meters and envelopes move without a device, what is
// played can be kept in a file, and tests hear each frame.

#include <atomic>
#include <chrono>
#include <thread>
#include <utility>
#include <vector>

#include "softsynth/parameters/constants.h"
#include "standalone/device_player.h"
#include "standalone/devices.h"

namespace tarquil {

namespace {

constexpr uint32_t USUAL_PERIOD = 512;

class NullDevice : public AudioDevice {
  public:
    NullDevice(DevicePlayer& played, std::string called, uint32_t device_rate, uint32_t frames,
               bool real_time, Listener heard_by)
        : player(played), title(std::move(called)), rate(device_rate), period(frames),
          is_real_time(real_time), listener(std::move(heard_by)), thread([this] { run(); }) {}
    NullDevice(const NullDevice&) = delete;
    NullDevice& operator=(const NullDevice&) = delete;
    ~NullDevice() override {
        is_stopping = true;
        thread.join();
    }

    [[nodiscard]] std::string name() const override {
        return title + ", " + std::to_string(period) + " frames at " + std::to_string(rate) + " Hz";
    }
    [[nodiscard]] bool is_lost() const override { return false; }
    [[nodiscard]] uint32_t num_dropouts() const override { return 0; }

  private:
    void run() {
        std::vector<float> left(period);
        std::vector<float> right(period);
        const auto start = std::chrono::steady_clock::now();
        uint64_t frames = 0;
        while (!is_stopping && (is_real_time || !player.is_finished())) {
            player.begin_block(left.data(), right.data(), period);
            player.end_block();
            if (listener)
                listener(left.data(), right.data(), period);
            frames += period;
            if (is_real_time) {
                const std::chrono::duration<double> played(double(frames) / rate);
                std::this_thread::sleep_until(
                    start + std::chrono::duration_cast<std::chrono::nanoseconds>(played));
            }
        }
    }

    DevicePlayer& player;
    const std::string title;
    const uint32_t rate;
    const uint32_t period;
    const bool is_real_time;
    const Listener listener;
    std::atomic<bool> is_stopping{false};
    std::thread thread; // the last: it uses the others
};

std::string title_of(const DeviceChoice& choice) {
    switch (choice.kind) {
    case DeviceKind::RECORDED:
        return "into " + choice.file;
    case DeviceKind::FAST:
        return "silent and as fast as it goes";
    default:
        return "silent";
    }
}

} // namespace

std::unique_ptr<AudioDevice> open_null_device(DevicePlayer& player, const DeviceChoice& choice,
                                              std::string& reason, Listener listener) {
    const uint32_t rate = choice.rate.value_or(SAMPLE_RATE);
    if (!player.activate(rate)) {
        reason = "nothing plays at " + std::to_string(rate) + " Hz";
        return nullptr;
    }
    return std::make_unique<NullDevice>(player, title_of(choice), rate,
                                        choice.period.value_or(USUAL_PERIOD),
                                        choice.kind != DeviceKind::FAST, std::move(listener));
}

} // namespace tarquil
