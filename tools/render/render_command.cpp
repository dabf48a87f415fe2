// `tarquil render`: a MIDI file in, a sound file out.

#include <unistd.h>

#include <memory>
#include <string>
#include <vector>

#include "common/failure.h"
#include "instrument/checked_load.h"
#include "midi/smf/song_file.h"
#include "tools/bank/bank_files.h"
#include "tools/bank_error.h"
#include "tools/command.h"
#include "tools/notice.h"
#include "tools/render/gm_options.h"
#include "tools/render/gm_report_text.h"
#include "tools/render/render_options.h"
#include "tools/render/render_summary.h"
#include "tools/render/renderer.h"
#include "tools/write_result.h"

namespace tarquil {

namespace {

std::unique_ptr<Orchestra> load_orchestra(const RenderOptions& options, LoadReport& report) {
    auto orchestra = std::make_unique<Orchestra>();
    orchestra->channels = options.channels;
    if (!options.bank_path.empty())
        load_bank_to_play(orchestra->bank, options.bank_path, report);
    for (size_t channel = 0; channel < options.instrument_paths.size(); channel++) {
        const std::string& path = options.instrument_paths[channel];
        if (path.empty())
            continue;
        Instrument instrument = load_instrument_file(path, "", report);
        clamp_choices(instrument);
        orchestra->fixed_instruments[channel] = instrument;
    }
    return orchestra;
}

void render(const RenderOptions& options) {
    choose_audio_format(options.audio); // complains before anything is read
    const Song song = load_song(options.song_path);
    LoadReport report;
    const std::unique_ptr<Orchestra> orchestra = load_orchestra(options, report);
    const std::shared_ptr<const GmSet> set = choose_gm_set(options, orchestra->bank, &report);
    const RenderResult result = render_song(options, song, *orchestra, set);
    if (!options.quiet && !options.json)
        print_load_summary(report);

    // Standard output that carries the sound carries nothing else.
    const std::string& path = options.audio.path;
    if (options.json)
        write_result(path == "-" ? STDERR_FILENO : options.standard_output,
                     summary_json(path, result, options.report));
    else if (!options.quiet)
        write_result(STDERR_FILENO, summary_text(path, result));
    if (options.report && result.report && !options.json)
        write_result(STDERR_FILENO, gm_report_text(*result.report, result.most_voices));
}

// An option whose text `read` turns into a setting.
template <typename Read>
CLI::Option* add_text_option(CLI::App& command, const std::string& names, const Read& read,
                             const std::string& help) {
    return command.add_option_function<std::string>(names, read, help);
}

void add_sound_options(CLI::App& command, const std::shared_ptr<RenderOptions>& options) {
    command
        .add_option("--bank", options->bank_path,
                    "Play this bank: gm, originals, or a file; gm if not given")
        ->type_name("BANK");
    command
        .add_option_function<std::vector<std::string>>(
            "--instrument",
            [options](const std::vector<std::string>& texts) {
                for (const std::string& text : texts)
                    parse_instrument(text, *options);
            },
            "Play this instrument on a channel (1-16) and ignore its program changes")
        ->type_name("CHANNEL=FILE.tqi")
        ->expected(1)
        ->take_all();
    add_gm_options(command, options);
    command.add_flag("--report", options->report,
                     "Say what became of a General MIDI song's messages");
    add_text_option(
        command, "--channels",
        [options](const std::string& text) { options->channels = parse_channels(text); },
        "Leave out the notes of all other channels")
        ->type_name("1,3-5");
    add_text_option(
        command, "--tail", [options](const std::string& text) { options->tail = parse_tail(text); },
        "Go on for SECONDS after the song, or until half a second below -90 dBFS, at most 30 s")
        ->type_name("SECONDS|auto");
    add_text_option(
        command, "--block",
        [options](const std::string& text) { options->block = parse_block(text); },
        "Samples that a plug-in renders at once: 4-2048, a multiple of 4; 64 if not given, as the "
        "engine's own")
        ->type_name("N");
    add_text_option(
        command, "--seed", [options](const std::string& text) { options->seed = parse_seed(text); },
        "Start of the random oscillator phases; 1 if not given")
        ->type_name("N");
    add_text_option(
        command, "--threads",
        [options](const std::string& text) { options->threads = parse_threads(text); },
        "Render heavy passages on N threads (1-64), with the same bytes; 1 if not given")
        ->type_name("N");
}

// What only the engine linked in can do.
void add_plugin_option(CLI::App& command, RenderOptions& options) {
    command
        .add_option("--plugin", options.plugin_path,
                    "Play this VST 2 instrument; Tarquil's own gives the same sound as without")
        ->type_name("FILE.so")
        ->excludes("--instrument")
        ->excludes("--stems")
        ->excludes("--seed")
        ->excludes("--threads");
}

void add_file_options(CLI::App& command, const std::shared_ptr<RenderOptions>& options) {
    command
        .add_option("--format", options->audio.format,
                    "wav, flac, aiff, ogg (Vorbis) or opus, whatever the name ends in")
        ->type_name("NAME");
    command
        .add_option("--bits", options->audio.bits,
                    "16, 24, 32 (integers) or float; 24 if not given; flac has 16 and 24")
        ->type_name("BITS");
    add_text_option(
        command, "--rate",
        [options](const std::string& text) { options->audio.rate = parse_rate(text); },
        "Convert to this sample rate; 44100 if not given, 48000 for opus")
        ->type_name("HZ");
    add_text_option(
        command, "--normalize",
        [options](const std::string& text) { options->normalize_dbfs = parse_level(text); },
        "Scale the sound to this peak")
        ->type_name("DBFS");
    command
        .add_option("--stems", options->stem_folder,
                    "Also write each used channel, before the master section, to channel-NN files")
        ->type_name("DIR");
}

} // namespace

void add_render_command(CLI::App& app, int results) {
    CLI::App* command = app.add_subcommand("render", "Render a MIDI file into a sound file");
    const auto options = std::make_shared<RenderOptions>();
    options->standard_output = results;
    command->add_option("SONG", options->song_path, "The MIDI file; - is standard input")
        ->required();
    command
        ->add_option("OUT", options->audio.path,
                     "The sound file (.wav, .flac, .aiff, .ogg, .opus); - is standard output")
        ->required();
    add_sound_options(*command, options);
    add_file_options(*command, options);
    add_plugin_option(*command, *options);
    command->add_flag("--quiet", options->quiet, "Print nothing but errors");
    command->add_flag("--json", options->json, "Print the summary as JSON on standard output");
    command->footer("Exit status: 0 done; 1 cannot be done; 2 an option, an input file or the\n"
                    "output's place is to blame.  On failure no file is left behind.\n"
                    "Examples:\n"
                    "  tarquil render song.mid song.wav\n"
                    "  tarquil render --bank my.tqb --normalize -1 song.mid song.flac\n"
                    "  tarquil render --bits float --stems stems song.mid song.wav");
    command->callback([options] { render(*options); });
}

} // namespace tarquil
