// The options of a render that concern General MIDI.

#include "tools/render/gm_options.h"

#include <algorithm>

#include "common/failure.h"
#include "sounds/shipped_sounds.h"

namespace tarquil {

namespace {

// What only the engine's own numbers go with.
const char* find_native_option(const RenderOptions& options) {
    if (!options.plugin_path.empty())
        return "--plugin";
    if (!options.stem_folder.empty())
        return "--stems";
    const auto& paths = options.instrument_paths;
    const bool has_instrument = std::any_of(paths.begin(), paths.end(),
                                            [](const std::string& path) { return !path.empty(); });
    return has_instrument ? "--instrument" : nullptr;
}

bool plays_general_midi(const RenderOptions& options, const TarqSettings& bank) {
    const char* const native_option = find_native_option(options);
    const bool is_asked = options.midi == DialectChoice::GM || !options.map_path.empty();
    if (options.midi == DialectChoice::NATIVE) {
        if (!options.map_path.empty())
            throw BadInput("--map: a General MIDI set does not go with --midi native");
        return false;
    }
    if (is_asked && native_option != nullptr)
        throw BadInput(std::string(native_option) +
                       ": does not go with General MIDI; leave it out, or add --midi native");
    if (is_asked || native_option != nullptr)
        return is_asked;
    return options.bank_path.empty() || bank.get_midi_dialect() == MidiDialect::GENERAL_MIDI;
}

} // namespace

void add_gm_options(CLI::App& command, const std::shared_ptr<RenderOptions>& options) {
    command
        .add_option_function<std::string>(
            "--midi",
            [options](const std::string& text) { options->midi = parse_midi_dialect(text); },
            "What the song's messages mean: gm (General MIDI), native (the engine's own numbers) "
            "or auto, as the bank says, General MIDI without one")
        ->type_name("auto|gm|native");
    command
        .add_option("--map", options->map_path,
                    "Play a General MIDI set: a map and the banks that it names")
        ->type_name("SET.tqm");
}

std::shared_ptr<const GmSet> choose_gm_set(const RenderOptions& options, TarqSettings& bank,
                                           LoadReport* report) {
    if (!plays_general_midi(options, bank))
        return nullptr;
    if (options.map_path.empty()) {
        if (options.bank_path.empty())
            bank = shipped_gm_bank();
        return shipped_gm_set();
    }
    auto set = std::make_shared<GmSet>();
    TarqSettings melodic = bank;
    load_gm_set(options.map_path, *set, melodic, report);
    if (options.bank_path.empty())
        bank = std::move(melodic);
    return set;
}

} // namespace tarquil
