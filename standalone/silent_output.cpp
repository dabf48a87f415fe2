// Plays to nobody, in real time, so that meters and envelopes move.

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

#include "softsynth/parameters/constants.h"
#include "standalone/audio_output.h"
#include "standalone/device_player.h"

namespace tarquil {

namespace {

constexpr uint32_t BLOCK = 512;

class SilentOutput : public AudioOutput {
  public:
    explicit SilentOutput(Player& played) : player(played), thread([this] { run(); }) {}
    SilentOutput(const SilentOutput&) = delete;
    SilentOutput& operator=(const SilentOutput&) = delete;
    ~SilentOutput() override {
        is_stopping = true;
        thread.join();
    }

    [[nodiscard]] std::string name() const override { return "silent"; }

  private:
    void run() {
        std::vector<float> left(BLOCK);
        std::vector<float> right(BLOCK);
        auto next = std::chrono::steady_clock::now();
        while (!is_stopping) {
            player.render(left.data(), right.data(), BLOCK);
            next += std::chrono::microseconds(int64_t(1000000) * BLOCK / SAMPLE_RATE);
            std::this_thread::sleep_until(next);
        }
    }

    DevicePlayer player;
    std::atomic<bool> is_stopping{false};
    std::thread thread; // the last: it uses the others
};

} // namespace

std::unique_ptr<AudioOutput> make_silent_output(Player& played) {
    return std::make_unique<SilentOutput>(played);
}

} // namespace tarquil
