// `tarquil plot`: pictures of filters, waveforms and envelopes.

#include <charconv>
#include <cmath>
#include <memory>
#include <system_error>

#include "common/failure.h"
#include "common/number_text.h"
#include "instrument/checked_load.h"
#include "tools/bank/bank_files.h"
#include "tools/bank_error.h"
#include "tools/command.h"
#include "tools/notice.h"
#include "tools/plot/filter_type_name.h"
#include "tools/plot/instrument_plots.h"
#include "tools/plot/plot_canvas.h"
#include "tools/plot/plot_file.h"

namespace tarquil {

namespace {

constexpr int MIDDLE_C = 60;
constexpr int MAX_PERIODS = 100;

constexpr double MAX_CUTOFF = 22050.0; // Hz
constexpr double MAX_Q = 100.0;
constexpr double MAX_GAIN = 60.0; // dB

// What the options of all the commands below leave behind; each uses some.
struct PlotOptions {
    PictureOptions picture;
    std::string instrument;
    std::string bank;
    unsigned program = 0;
    int note = MIDDLE_C;
    int periods = 2;
    double hold = 1.0; // seconds
    // of a filter that no instrument has
    std::string type;
    double cutoff = 1000.0; // Hz
    double resonance = 0.7071;
    int depth = 1;
    double gain = 0.0; // dB
};

using SharedPlotOptions = std::shared_ptr<PlotOptions>;

struct NumberRange {
    double first = 0.0;
    double last = 1.0;
};

// An option for a number within `range`, written as in the C locale.
CLI::Option* add_number(CLI::App& command, const std::string& name, double& value, const char* help,
                        NumberRange range) {
    const std::string limits =
        trimmed_number(range.first, 3) + " to " + trimmed_number(range.last, 3);
    return command
        .add_option_function<std::string>(
            name,
            [=, &value](const std::string& text) {
                const char* end = text.data() + text.size();
                double number = 0.0;
                const std::from_chars_result read = std::from_chars(text.data(), end, number);
                const bool within = number >= range.first && number <= range.last;
                if (read.ec != std::errc{} || read.ptr != end || !within)
                    throw CLI::ValidationError(name, text + " is not a number from " + limits);
                value = number;
            },
            help)
        ->type_name(limits)
        ->default_str(trimmed_number(value, 4));
}

CLI::App* add_plot_command(CLI::App& plot, const char* name, const char* help,
                           const SharedPlotOptions& options) {
    CLI::App* command = plot.add_subcommand(name, help);
    PictureOptions& picture = options->picture;
    command
        ->add_option("PICTURE", picture.path,
                     "The picture to write (.svg or .png); - is SVG on standard output")
        ->required();
    command->add_option("--width", picture.width, "Width of the picture in pixels")
        ->capture_default_str()
        ->check(CLI::Range(MIN_PLOT_WIDTH, MAX_PLOT_SIZE));
    command->add_option("--height", picture.height, "Height of the picture in pixels")
        ->capture_default_str()
        ->check(CLI::Range(MIN_PLOT_HEIGHT, MAX_PLOT_SIZE));
    CLI::Option* file =
        command->add_option("--instrument", options->instrument, "Plot this instrument (.tqi)")
            ->type_name("FILE");
    CLI::Option* bank =
        command->add_option("--bank", options->bank, "Plot an instrument of this bank (.tqb)")
            ->type_name("FILE");
    file->excludes(bank);
    command->add_option("--program", options->program, "The instrument's number in the bank")
        ->capture_default_str()
        ->check(CLI::Range(0U, MAX_INSTRUMENTS - 1))
        ->needs(bank);
    return command;
}

void add_note(CLI::App& command, const SharedPlotOptions& options) {
    command.add_option("--note", options->note, "MIDI note number, 60 is middle C")
        ->capture_default_str()
        ->check(CLI::Range(0, 127));
}

bool has_instrument(const PlotOptions& options) {
    return !options.instrument.empty() || !options.bank.empty();
}

Instrument load_instrument(const PlotOptions& options, const char* needed, LoadReport& report) {
    if (!has_instrument(options))
        throw BadInput(needed);
    Instrument instrument =
        options.bank.empty()
            ? load_instrument_file(options.instrument, options.instrument, report)
            : load_bank_file(options.bank, report)->get_instrument(options.program);
    clamp_choices(instrument);
    return instrument;
}

FilterSettings typed_filter(const PlotOptions& options) {
    FilterSettings filter;
    filter.type = find_filter_type(options.type);
    filter.depth = options.depth;
    filter.cutoff_octaves = float(std::log2(options.cutoff / 20.0));
    filter.resonance = float(options.resonance);
    // A section's gain at its centre is the square of 10^g.
    filter.gain = float(options.gain / 40.0 / options.depth);
    return filter;
}

void draw_filter(const PlotOptions& options, int results) {
    LoadReport report;
    const Plot plot =
        options.type.empty()
            ? plot_instrument_filters(
                  load_instrument(options, "plot filter: --type, --instrument or --bank is needed",
                                  report),
                  options.note)
            : plot_filter(typed_filter(options));
    write_plot(plot, options.picture, results);
    print_load_summary(report);
}

void add_filter(CLI::App& plot, int results) {
    const auto options = std::make_shared<PlotOptions>();
    CLI::App* command =
        add_plot_command(plot, "filter", "Draw the frequency response of filters", options);
    add_note(*command, options);
    CLI::Option* type =
        command->add_option("--type", options->type, "Plot one filter: lowpass, ladder-lp-24, ...")
            ->type_name("NAME");
    type->excludes("--instrument")->excludes("--bank")->excludes("--note");
    add_number(*command, "--cutoff", options->cutoff, "Cutoff in Hz", {1.0, MAX_CUTOFF})
        ->needs(type);
    add_number(*command, "--resonance", options->resonance, "Q", {0.001, MAX_Q})->needs(type);
    command->add_option("--depth", options->depth, "Sections of 12 dB/oct")
        ->capture_default_str()
        ->check(CLI::Range(1, Filter::MAX_DEPTH))
        ->needs(type);
    add_number(*command, "--gain", options->gain, "Gain in dB of the peaking and shelf types",
               {-MAX_GAIN, MAX_GAIN})
        ->needs(type);
    command->footer("The curves hold for quiet sound: a waveshaper or ladder compresses loud "
                    "sound.\n\n"
                    "Examples:\n"
                    "  tarquil plot filter --bank song.tqb --program 12 filter.svg\n"
                    "  tarquil plot filter --type lowpass --cutoff 800 --resonance 4 "
                    "--depth 2 filter.png");
    command->callback([=] { draw_filter(*options, results); });
}

void add_wave(CLI::App& plot, int results) {
    const auto options = std::make_shared<PlotOptions>();
    CLI::App* command = add_plot_command(
        plot, "wave", "Draw the oscillators' waveform, one copy of each, unfiltered", options);
    add_note(*command, options);
    command->add_option("--periods", options->periods, "How many periods of the note")
        ->capture_default_str()
        ->check(CLI::Range(1, MAX_PERIODS));
    command->footer("Examples:\n"
                    "  tarquil plot wave --instrument lead.tqi wave.svg\n"
                    "  tarquil plot wave --bank song.tqb --program 3 --note 36 --periods 4 "
                    "wave.png");
    command->callback([=] {
        LoadReport report;
        const Instrument instrument =
            load_instrument(*options, "plot wave: --instrument or --bank is needed", report);
        write_plot(plot_wave(instrument, options->note, options->periods), options->picture,
                   results);
        print_load_summary(report);
    });
}

void add_envelope(CLI::App& plot, int results) {
    const auto options = std::make_shared<PlotOptions>();
    CLI::App* command =
        add_plot_command(plot, "envelope", "Draw the envelopes of an instrument", options);
    add_number(*command, "--hold", options->hold, "Seconds from note-on to note-off",
               {0.0, MAX_HOLD});
    command->footer("Examples:\n"
                    "  tarquil plot envelope --instrument pad.tqi --hold 2.5 envelope.svg\n"
                    "  tarquil plot envelope --bank song.tqb --program 3 - > envelope.svg");
    command->callback([=] {
        LoadReport report;
        const Instrument instrument =
            load_instrument(*options, "plot envelope: --instrument or --bank is needed", report);
        write_plot(plot_envelopes(instrument, options->hold), options->picture, results);
        print_load_summary(report);
    });
}

} // namespace

void add_plot_command(CLI::App& app, int results) {
    CLI::App* plot = app.add_subcommand("plot", "Draw filters, waveforms and envelopes");
    plot->require_subcommand(1);
    add_filter(*plot, results);
    add_wave(*plot, results);
    add_envelope(*plot, results);
}

} // namespace tarquil
