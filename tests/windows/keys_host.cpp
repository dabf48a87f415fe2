// A window of its own, or one in a host's, that tells what is played by hand in it.
//
//   keys_host own|hosted SECONDS
//
// Prints "window", its number and that of another one when they are there, then a line for each
// note that begins ("on 1 60 100": channel, key, velocity) or ends ("off 1 60"), for each bend, and
// for each size that it takes.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <thread>

#include "frame/editor_frame.h"
#include "frame/player_synth.h"
#include "tests/windows/screen.h"

namespace tarquil {

namespace {

class TellingSynth : public PlayerSynth {
  public:
    using PlayerSynth::PlayerSynth;

    void play_key(unsigned channel, unsigned key, unsigned velocity) override {
        PlayerSynth::play_key(channel, key, velocity);
        if (velocity > 0)
            std::printf("on %u %u %u\n", channel + 1, key, velocity);
        else
            std::printf("off %u %u\n", channel + 1, key);
    }
    void bend(unsigned channel, unsigned value) override {
        PlayerSynth::bend(channel, value);
        std::printf("bend %u %u\n", channel + 1, value);
    }
};

int run(bool is_hosted, int seconds) {
    using namespace std::chrono_literals;
    Screen screen;
    Player player;
    player.start();
    TellingSynth synth(player);
    EditorFrame frame(player, synth);
    frame.plays_computer_keys = !is_hosted;
    frame.on_resize = [](int width, int height) { std::printf("size %d %d\n", width, height); };
    const Window parent = is_hosted ? screen.make_window(frame.width(), frame.height()) : 0;
    if (!frame.open(parent))
        return fail("the editor does not open");
    const Window other = screen.make_window(60, 60, 1500);
    std::printf("window %lu %lu\n", frame.get_window()->native_handle(), other);
    std::atomic<bool> is_playing{true};
    std::thread audio([&] {
        float sound[2 * 256];
        while (is_playing) {
            player.audio().run(sound, 256);
            std::this_thread::sleep_for(6ms);
        }
    });
    for (int i = 0; i < seconds * 1000 / 16; i++) {
        frame.idle();
        std::fflush(stdout);
        std::this_thread::sleep_for(16ms);
    }
    frame.close();
    is_playing = false;
    audio.join();
    for (const Window left : {parent, other})
        if (left != 0)
            screen.destroy(left);
    return 0;
}

} // namespace

} // namespace tarquil

int main(int argc, char** argv) {
    using namespace tarquil;
    if (argc == 3 && (std::strcmp(argv[1], "own") == 0 || std::strcmp(argv[1], "hosted") == 0))
        return run(std::strcmp(argv[1], "hosted") == 0, std::atoi(argv[2]));
    return fail("usage: keys_host own|hosted SECONDS");
}
