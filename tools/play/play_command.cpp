// `tarquil play`: the synthesizer as a program of its own.

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "common/failure.h"
#include "common/load_string.h"
#include "midi/smf/song_file.h"
#include "sounds/shipped_sounds.h"
#include "sounds/starting_sounds.h"
#include "standalone/choose_device.h"
#include "standalone/run_player.h"
#include "tools/bank_error.h"
#include "tools/command.h"
#include "tools/notice.h"
#include "tools/play/recording.h"
#include "tools/render/gm_options.h"
#include "tools/write_result.h"

namespace tarquil {

namespace {

struct PlayOptions {
    std::string song_path;
    std::shared_ptr<RenderOptions> sounds = std::make_shared<RenderOptions>();
    DeviceChoice device;
    bool has_no_window = false;
    bool is_list = false;
};

// A file of the window's has them beside the bank.
void choose_channel_programs(const std::string& bank_path, Player& player) {
    std::string text;
    if (find_shipped_bank(bank_path) != nullptr || load_file_to_string(bank_path, text) != 0)
        return;
    const ChannelPrograms programs = find_channel_programs(text, player.dialect());
    for (unsigned channel = 0; channel < programs.size(); channel++)
        player.set_channel_program(channel, programs[channel]);
}

// A song has the sounds that a render gives it; without one, messages mean what the bank says,
// which is the General MIDI set if none is named.
void choose_sounds(const PlayOptions& options, Player& player) {
    const RenderOptions& sounds = *options.sounds;
    LoadReport report;
    TarqSettings bank = player.get_bank();
    if (!sounds.bank_path.empty())
        load_bank_to_play(bank, sounds.bank_path, report);
    const bool is_as_bank_says =
        options.song_path.empty() && sounds.map_path.empty() && sounds.midi == DialectChoice::AUTO;
    if (is_as_bank_says) {
        give_starting_sounds(player);
        if (!sounds.bank_path.empty()) {
            player.set_bank(bank);
            choose_channel_programs(sounds.bank_path, player);
        }
    } else {
        const std::shared_ptr<const GmSet> set = choose_gm_set(sounds, bank, &report);
        player.set_gm_set(set);
        player.set_bank(bank);
        player.set_dialect(set != nullptr ? MidiDialect::GENERAL_MIDI : MidiDialect::NATIVE);
    }
    print_load_summary(report);
}

// A file to save to: none for a bank that comes with the program.
std::string path_of_bank(const std::string& named) {
    if (named.empty() || find_shipped_bank(named) != nullptr)
        return "";
    std::error_code error;
    const std::filesystem::path whole = std::filesystem::absolute(named, error);
    return error || !std::filesystem::is_regular_file(whole, error) ? "" : whole.string();
}

void play(const PlayOptions& options) {
    std::optional<Song> song;
    if (!options.song_path.empty())
        song = load_song(options.song_path);
    const auto player = std::make_unique<DevicePlayer>();
    choose_sounds(options, player->player());
    if (song)
        player->set_song(*song);
    else if (options.device.kind == DeviceKind::FAST)
        throw BadInput("--device null:fast: plays a song only; name one, or use --device null");
    PlaySettings settings{.device = options.device,
                          .has_window = !options.has_no_window,
                          .bank_path = path_of_bank(options.sounds->bank_path),
                          .say = [](const std::string& line) { print_notice(line); }};
    std::optional<Recording> recording;
    if (options.device.kind == DeviceKind::RECORDED) {
        recording.emplace(options.device.file, options.device.rate);
        settings.device.rate = recording->get_rate();
        settings.listener = recording->listener();
    }
    run_player(*player, settings);
    if (recording && !recording->finish())
        print_notice(options.device.file + ": holds the beginning only, no more fits into it");
}

void add_device_options(CLI::App& command, const std::shared_ptr<PlayOptions>& options) {
    CLI::Option* device =
        command
            .add_option_function<std::string>(
                "--device",
                [options](const std::string& text) { parse_device(text, options->device); },
                "Play through jack, alsa, alsa:NAME, null (nobody hears it), null:fast or into "
                "file:OUT.wav; if not given, the JACK server where one runs, else ALSA's default "
                "device")
            ->type_name("NAME");
    command
        .add_option_function<std::string>(
            "--rate",
            [options](const std::string& text) { options->device.rate = parse_device_rate(text); },
            "Play at this sample rate or not at all; the device's own if not given")
        ->type_name("HZ");
    command
        .add_option_function<std::string>(
            "--period",
            [options](const std::string& text) { options->device.period = parse_period(text); },
            "Frames of a block; a JACK server then takes this for all its programs")
        ->type_name("N");
    command
        .add_flag_callback(
            "--silent", [options] { options->device.kind = DeviceKind::SILENT; },
            "The same as --device null")
        ->excludes(device);
}

} // namespace

void add_play_command(CLI::App& app, int results) {
    CLI::App* command =
        app.add_subcommand("play", "Play live and edit the sounds, with a MIDI file if you like");
    const auto options = std::make_shared<PlayOptions>();
    command->add_option("SONG", options->song_path, "A MIDI file to play; - is standard input");
    command
        ->add_option("--bank", options->sounds->bank_path,
                     "Start with this bank, gm or originals; gm if not given")
        ->type_name("BANK.tqb");
    add_gm_options(*command, options->sounds);
    command->add_flag("--no-window", options->has_no_window,
                      "Play without the editor, a song until its sound has ended");
    add_device_options(*command, options);
    command->add_flag("--list", options->is_list, "Print the devices that there are, and exit");
    command->footer(
        "Notes come from JACK's or ALSA's MIDI port \"Tarquil\", and in the window from\n"
        "the computer's keyboard: A to ; are the white keys, W to P the black ones, Z and\n"
        "X change the octave. Ctrl+S saves the bank; edits that are in no file are kept in\n"
        "~/.local/state/tarquil and offered at the next start.\n"
        "Exit status: 0 done; 1 there is no such device or window; 2 an option or an\n"
        "input file is to blame.\n"
        "Examples:\n"
        "  tarquil play\n"
        "  tarquil play --no-window song.mid\n"
        "  tarquil play --device alsa:hw:0 --rate 96000 --bank my.tqb");
    command->callback([options, results] {
        if (options->is_list)
            write_result(results, list_devices());
        else
            play(*options);
    });
}

} // namespace tarquil
