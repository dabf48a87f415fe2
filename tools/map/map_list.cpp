// What a General MIDI set says, as text.

#include "tools/map/map_list.h"

#include <algorithm>

#include "common/number_text.h"

namespace tarquil {

namespace {

unsigned num_drums(const DrumKit& kit) {
    return unsigned(
        std::count_if(kit.begin(), kit.end(), [](const auto& drum) { return drum.has_value(); }));
}

std::string padded(unsigned number) {
    const std::string text = std::to_string(number);
    return std::string(text.size() < 3 ? 3 - text.size() : 0, ' ') + text;
}

std::string list_rules(const SoundRules& rules, const char* what) {
    std::string text;
    for (const NoteLaw& law : rules.all_laws()) {
        text += std::string(what) + " " + padded(law.program) + "  " +
                find_controller(law.controller)->key;
        if (law.per_octave != 0.0F)
            text += "  " + trimmed_number(law.per_octave, 2) + " per octave";
        if (law.per_velocity != 0.0F)
            text += "  " + trimmed_number(law.per_velocity, 2) + " per 12 of velocity";
        text += "\n";
    }
    for (unsigned program = 0; program < GM_PROGRAMS; program++) {
        const LevelLaw& level = rules.level[program];
        if (level.below != 0.0F || level.above != 0.0F || level.per_velocity != 0.0F)
            text += std::string(what) + " " + padded(program) + "  level  from key " +
                    std::to_string(level.at) + " " + trimmed_number(level.below, 2) +
                    " dB per octave down, " + trimmed_number(level.above, 2) + " up, " +
                    trimmed_number(level.per_velocity, 2) + " per 12 of velocity\n";
        const OwnVibrato& vibrato = rules.vibrato[program];
        if (vibrato.cents > 0.0F)
            text += std::string(what) + " " + padded(program) + "  vibrato  " +
                    trimmed_number(vibrato.hz, 2) + " Hz, " + trimmed_number(vibrato.cents, 1) +
                    " cents, after " + trimmed_number(vibrato.delay_seconds, 2) + " s\n";
    }
    return text;
}

std::string list_kit(const GmMap& map, unsigned program, const DrumKit& kit) {
    std::string text;
    for (unsigned key = 0; key < NUM_KEYS; key++) {
        if (!kit[key])
            continue;
        const DrumKey& drum = *kit[key];
        text += "kit " + padded(program) + "  key " + padded(key) + "  " +
                map.families[drum.family] + ", instrument " + std::to_string(drum.instrument) +
                ", note " + std::to_string(drum.note) + ", " +
                (drum.milliseconds == 0 ? "held" : std::to_string(drum.milliseconds) + " ms");
        for (unsigned i = 0; i < drum.num_chokes; i++)
            text += (i == 0 ? ", ends " : " ") + std::to_string(drum.chokes[i]);
        text += "\n";
    }
    return text;
}

} // namespace

std::string map_summary(const GmMap& map) {
    unsigned kits = 0;
    unsigned drums = 0;
    for (unsigned program = 0; program < GM_PROGRAMS; program++) {
        const DrumKit* kit = map.kit(program);
        kits += kit != nullptr ? 1 : 0;
        drums += kit != nullptr ? num_drums(*kit) : 0;
    }
    const size_t laws = map.programs.all_laws().size() + map.drums.all_laws().size();
    return "families " + std::to_string(map.families.size()) + ", kits " + std::to_string(kits) +
           ", drums " + std::to_string(drums) + ", laws " + std::to_string(laws);
}

std::string list_map(const GmMap& map) {
    std::string text;
    if (!map.title.empty())
        text += "title: " + map.title + "\n";
    text += list_rules(map.programs, "program") + list_rules(map.drums, "drum");
    for (unsigned program = 0; program < GM_PROGRAMS; program++)
        if (const DrumKit* kit = map.kit(program); kit != nullptr)
            text += list_kit(map, program, *kit);
    return text;
}

} // namespace tarquil
