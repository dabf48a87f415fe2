// The stand-alone program while it plays.

#include "standalone/run_player.h"

#include <chrono>
#include <csignal>
#include <iterator>
#include <thread>

#include "common/failure.h"
#include "standalone/choose_device.h"
#include "standalone/device_keeper.h"
#include "standalone/play_window.h"

namespace tarquil {

namespace {

constexpr auto FRAME_TIME = std::chrono::milliseconds(16);

volatile std::sig_atomic_t is_told_to_end = 0;

// While it lives, the signals that end a process end the playing.
class EndSignals {
  public:
    EndSignals() {
        is_told_to_end = 0;
        for (size_t i = 0; i < std::size(SIGNALS); i++) {
            struct sigaction action {};
            action.sa_handler = [](int) { is_told_to_end = 1; };
            sigaction(SIGNALS[i], &action, &previous[i]);
        }
    }
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;
    ~EndSignals() {
        for (size_t i = 0; i < std::size(SIGNALS); i++)
            sigaction(SIGNALS[i], &previous[i], nullptr);
    }

  private:
    static constexpr int SIGNALS[] = {SIGINT, SIGTERM, SIGHUP};
    struct sigaction previous[std::size(SIGNALS)] = {};
};

} // namespace

void run_player(DevicePlayer& player, const PlaySettings& settings) {
    std::string reason;
    std::unique_ptr<PlayWindow> window;
    if (settings.has_window) {
        player.player().start();
        window = open_play_window(player.player(), settings, reason);
        if (window == nullptr)
            throw Failure(STATUS_CANNOT, reason);
    }
    const EndSignals signals;
    DeviceKeeper keeper(
        choose_device(player, settings.device, settings.has_window, settings.listener),
        settings.say);
    if (!keeper.open(reason))
        throw Failure(STATUS_CANNOT, reason);
    if (!reason.empty())
        settings.say(reason);
    while (is_told_to_end == 0) {
        if (window != nullptr)
            window->show_sound(keeper.state());
        if (window != nullptr ? !window->idle() : player.is_finished())
            break;
        keeper.poll(std::chrono::steady_clock::now());
        std::this_thread::sleep_for(FRAME_TIME);
    }
    if (window != nullptr)
        window->keep_unsaved();
    if (keeper.num_dropouts() > 0)
        settings.say("dropouts in all: " + std::to_string(keeper.num_dropouts()));
}

} // namespace tarquil
