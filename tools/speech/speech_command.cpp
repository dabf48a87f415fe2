// `tarquil speech`: recordings become frames, and speak again.

#include <memory>

#include "softsynth/lpc/speech_encoder.h"
#include "softsynth/lpc/speech_file.h"
#include "tools/bank/bank_files.h"
#include "tools/command.h"
#include "tools/plot/plot_canvas.h"
#include "tools/plot/plot_file.h"
#include "tools/speech/recording.h"
#include "tools/speech/speech_decode.h"
#include "tools/speech/speech_files.h"
#include "tools/speech/speech_picture.h"
#include "tools/speech/speech_summary.h"
#include "tools/write_result.h"

namespace tarquil {

namespace {

constexpr double MIN_SPEED = 0.5;
constexpr double MIN_PITCH = 20.0; // Hz
constexpr double MAX_PITCH = 2000.0;

constexpr const char* SPEECH_HELP = "The speech file (.tlp); - is standard input";

void encode(const std::string& recording, const std::string& path, int results) {
    const std::string bytes = write_speech(encode_speech(read_recording(recording)));
    if (path == "-")
        write_result(results, bytes);
    else
        save_file(path, bytes);
}

void add_encode(CLI::App& speech, int results) {
    struct Options {
        std::string recording;
        std::string output;
    };
    const auto options = std::make_shared<Options>();
    CLI::App* command = speech.add_subcommand("encode", "Turn a recording into frames");
    command
        ->add_option("RECORDING", options->recording,
                     "The recording (WAV, FLAC, Ogg, ...; any rate, mixed to mono); - is standard "
                     "input")
        ->required();
    command->add_option("OUT", options->output, "The speech file (.tlp); - is standard output")
        ->required();
    command->footer("550 bytes a second; at most ten minutes.\n\n"
                    "Example:\n"
                    "  tarquil speech encode words.wav words.tlp");
    command->callback([=] { encode(options->recording, options->output, results); });
}

void add_voices(CLI::App& command, const std::shared_ptr<SpeechDecoding>& options) {
    CLI::Option* pitch = command
                             .add_option_function<double>(
                                 "--pitch",
                                 [options](double hz) {
                                     options->settings.voice = SpeechVoice::FIXED;
                                     options->settings.pitch_hz = hz;
                                 },
                                 "Speak on one pitch instead of the recording's melody")
                             ->type_name("HZ")
                             ->check(CLI::Range(MIN_PITCH, MAX_PITCH));
    CLI::Option* carrier =
        command
            .add_option_function<std::string>(
                "--carrier",
                [options](const std::string& path) {
                    options->settings.voice = SpeechVoice::CARRIER;
                    options->carrier_path = path;
                },
                "Let this sound speak, a held chord for instance; repeated when it is shorter")
            ->type_name("FILE.wav");
    CLI::Option* whisper = command.add_flag_callback(
        "--whisper", [options] { options->settings.voice = SpeechVoice::WHISPER; }, "Whisper");
    pitch->excludes(carrier)->excludes(whisper);
    carrier->excludes(whisper);
}

void add_decode(CLI::App& speech, int results) {
    struct Options {
        std::string path;
        std::shared_ptr<SpeechDecoding> decoding = std::make_shared<SpeechDecoding>();
    };
    const auto options = std::make_shared<Options>();
    SpeechDecoding& decoding = *options->decoding;
    decoding.standard_output = results;
    CLI::App* command = speech.add_subcommand("decode", "Speak frames into a sound file");
    command->add_option("SPEECH", options->path, SPEECH_HELP)->required();
    command
        ->add_option("OUT", decoding.audio.path,
                     "The sound file (.wav, .flac, .aiff, .ogg), mono; - is standard output")
        ->required();
    command
        ->add_option("--speed", decoding.settings.speed,
                     "Speak faster or slower; the pitch stays as it is")
        ->capture_default_str()
        ->check(CLI::Range(MIN_SPEED, MAX_SPEECH_SPEED));
    add_voices(*command, options->decoding);
    command
        ->add_option("--bits", decoding.audio.bits,
                     "16, 24, 32 (integers) or float; 24 if not given; flac has 16 and 24")
        ->type_name("BITS");
    command->footer("Examples:\n"
                    "  tarquil speech decode words.tlp words.wav --speed 0.8\n"
                    "  tarquil render chord.mid chord.wav && "
                    "tarquil speech decode words.tlp talk.wav --carrier chord.wav");
    command->callback(
        [options] { decode_speech(load_speech_file(options->path), *options->decoding); });
}

void add_speech_show(CLI::App& speech, int results) {
    struct Options {
        std::string path;
        bool frames = false;
        PictureOptions picture;
    };
    const auto options = std::make_shared<Options>();
    CLI::App* command = speech.add_subcommand("show", "Show what a speech file holds");
    command->add_option("SPEECH", options->path, SPEECH_HELP)->required();
    command->add_flag("--frames", options->frames, "Also print a line for each frame");
    command
        ->add_option("--plot", options->picture.path,
                     "Draw spectrum, formants, pitch and level over time (.svg or .png)")
        ->type_name("FILE");
    command->add_option("--width", options->picture.width, "Width of the picture in pixels")
        ->capture_default_str()
        ->check(CLI::Range(MIN_PLOT_WIDTH, MAX_PLOT_SIZE));
    command->add_option("--height", options->picture.height, "Height of the picture in pixels")
        ->capture_default_str()
        ->check(CLI::Range(MIN_PLOT_HEIGHT, MAX_PLOT_SIZE));
    command->footer("Examples:\n"
                    "  tarquil speech show words.tlp --plot frames.png\n"
                    "  tarquil speech show words.tlp --frames | cut -f 1,3");
    command->callback([=] {
        const Speech shown = load_speech_file(options->path);
        std::string text = speech_summary(options->path, shown);
        if (options->frames)
            text += speech_table(shown);
        if (!options->picture.path.empty())
            draw_speech(shown, options->path, options->picture, results);
        if (options->picture.path != "-")
            write_result(results, text);
    });
}

} // namespace

void add_speech_command(CLI::App& app, int results) {
    CLI::App* speech =
        app.add_subcommand("speech", "Turn recordings into frames of speech, and speak them");
    speech->require_subcommand(1);
    add_encode(*speech, results);
    add_decode(*speech, results);
    add_speech_show(*speech, results);
}

} // namespace tarquil
