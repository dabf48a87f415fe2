// The editor as a program of its own: a plain window with the engine behind it.

#include <CLI/CLI.hpp>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <memory>
#include <string>
#include <thread>

#include "frame/editor_frame.h"
#include "frame/player_synth.h"
#include "instrument/checked_load.h"
#include "sounds/shipped_sounds.h"
#include "sounds/starting_sounds.h"
#include "standalone/audio_output.h"
#include "standalone/computer_keys.h"

namespace tarquil {

namespace {

constexpr auto FRAME_TIME = std::chrono::milliseconds(16);

volatile std::sig_atomic_t is_interrupted = 0;

std::unique_ptr<AudioOutput> find_output(Player& player, bool silent) {
    std::string jack_reason;
    std::string alsa_reason;
    std::unique_ptr<AudioOutput> output;
    if (!silent)
        output = make_jack_output(player, jack_reason);
    if (output == nullptr && !silent)
        output = make_alsa_output(player, alsa_reason);
    if (output == nullptr)
        output = make_silent_output(player);
    std::string line = "sound: " + output->name();
    for (const std::string& reason : {jack_reason, alsa_reason})
        line += reason.empty() ? "" : "; " + reason;
    std::fprintf(stderr, "%s\n", line.c_str());
    return output;
}

int run(const std::string& bank, bool silent) {
    Player player;
    give_drums(player);
    const TarqSettings* const shipped = find_shipped_bank(bank);
    if (shipped != nullptr) {
        player.set_bank(*shipped);
    } else {
        TarqSettings loaded = player.get_bank();
        const int error = load_bank_checked(loaded, bank);
        if (error != 0) {
            std::fprintf(stderr, "tarquil-editor: %s: %s\n", bank.c_str(),
                         error == 1 ? "cannot be opened" : "is no bank, or is damaged");
            return 2;
        }
        player.set_bank(loaded);
    }
    player.start();
    PlayerSynth synth(player);
    EditorFrame editor(player, synth);
    if (!editor.open(0)) {
        std::fputs("tarquil-editor: no window can be opened: is DISPLAY set?\n", stderr);
        return 1;
    }
    ComputerKeys keys(player);
    editor.get_window()->on_unused_key = [&keys](uint32_t key, bool is_pressed) {
        keys.press(key, is_pressed);
    };
    const std::unique_ptr<AudioOutput> output = find_output(player, silent);
    while (is_interrupted == 0 && !editor.get_window()->is_closed_by_user()) {
        editor.idle();
        std::this_thread::sleep_for(FRAME_TIME);
    }
    return 0;
}

} // namespace

} // namespace tarquil

int main(int argc, char** argv) {
    using namespace tarquil;
    CLI::App app("Edits the sounds of the Tarquil synthesizer. Notes come from MIDI and from the "
                 "computer's keyboard: A to ; are the white keys, W to P the black ones, Z and X "
                 "change the octave.");
    std::string bank(GM_BANK_NAME);
    bool silent = false;
    app.add_option("--bank", bank,
                   "the bank to start with: gm, originals or a file (.tqb); gm if not given");
    app.add_flag("--silent", silent, "play to no device");
    CLI11_PARSE(app, argc, argv);
    std::signal(SIGINT, [](int) { is_interrupted = 1; });
    std::signal(SIGTERM, [](int) { is_interrupted = 1; });
    return run(bank, silent);
}
