// What a General MIDI set says beside its sounds.

#include "midi/gm/gm_map.h"

#include <algorithm>
#include <cmath>

namespace tarquil {

namespace {

// Read while a note sounds, or by the channel that all its notes share.
constexpr unsigned SHARED_CONTROLLERS[] = {
    CTRL_MAIN_VOLUME,
    CTRL_PANNING,
    CTRL_AUX1_LEVEL,
    CTRL_AUX2_LEVEL,
    CTRL_CHANFX1_TYPE,
    CTRL_CHANFX1_PARAM1,
    CTRL_CHANFX1_PARAM2,
    CTRL_CHANFX1_PARAM3,
    CTRL_CHANFX1_PARAM4,
    CTRL_CHANFX1_PARAM5,
    CTRL_CHANFX1B_TYPE,
    CTRL_CHANFX1B_PARAM1,
    CTRL_CHANFX1B_PARAM2,
    CTRL_CHANFX1B_PARAM3,
    CTRL_CHANFX1B_PARAM4,
    CTRL_CHANFX1B_PARAM5,
    CTRL_CHANFX2_TYPE,
    CTRL_CHANFX2_PARAM1,
    CTRL_CHANFX2_PARAM2,
    CTRL_CHANFX2_PARAM3,
    CTRL_CHANFX2_PARAM4,
    CTRL_CHANFX2_PARAM5,
    CTRL_CHANFX2_WET,
    CTRL_OSC1_OSC2_MIX,
    CTRL_OSC3_VOLUME,
    CTRL_FILTER1_CUTOFF,
    CTRL_FILTER1_RESONANCE,
    CTRL_LFO1_SPEED,
    CTRL_LFO2_SPEED,
    CTRL_PITCH_BEND_MSB,
    CTRL_PITCH_BEND_LSB,
    CTRL_CHAN_MAX_VOICES,
    CTRL_CHAN_FILTER1_TYPE,
    CTRL_CHAN_FILTER1_CUTOFF,
    CTRL_CHAN_FILTER1_RESONANCE,
    CTRL_CHAN_FILTER1_GAIN,
    CTRL_CHAN_FILTER2_TYPE,
    CTRL_CHAN_FILTER2_CUTOFF,
    CTRL_CHAN_FILTER2_RESONANCE,
    CTRL_CHAN_FILTER2_GAIN,
    CTRL_CHAN_FILTER3_TYPE,
    CTRL_CHAN_FILTER3_CUTOFF,
    CTRL_CHAN_FILTER3_RESONANCE,
    CTRL_CHAN_FILTER3_GAIN,
    CTRL_CHAN_FILTER4_TYPE,
    CTRL_CHAN_FILTER4_CUTOFF,
    CTRL_CHAN_FILTER4_RESONANCE,
    CTRL_CHAN_FILTER4_GAIN,
};

// The panning of a drum comes from its kit, and bends do not reach drums.
bool is_shared_by_family(unsigned controller) {
    return !is_note_controller(controller) && controller != CTRL_PANNING &&
           controller != CTRL_PITCH_BEND_MSB && controller != CTRL_PITCH_BEND_LSB;
}

const char* find_difference(const ControllerBytes& a, const ControllerBytes& b) {
    for (const ControllerInfo& info : channel_controller_rows())
        if (is_shared_by_family(info.number) && a[info.number] != b[info.number])
            return info.key;
    return nullptr;
}

} // namespace

double LevelLaw::gain(unsigned key, unsigned velocity) const {
    constexpr double OCTAVE = 12.0;
    constexpr double STEP = 12.0;
    constexpr double TOP = 127.0;
    const double octaves = (double(key) - double(at)) / OCTAVE;
    const double decibels = (octaves < 0.0 ? -octaves * double(below) : octaves * double(above)) +
                            double(per_velocity) * (double(velocity) - TOP) / STEP;
    return std::pow(10.0, decibels / 20.0);
}

uint8_t law_byte(const NoteLaw& law, uint8_t base, unsigned key, unsigned velocity) {
    constexpr float MIDDLE_KEY = 60.0F;
    constexpr float MIDDLE_VELOCITY = 100.0F;
    constexpr float STEP = 12.0F;
    constexpr float MAX_LAW_BYTE = 126.0F;
    const float byte = float(base) + law.per_octave * (float(key) - MIDDLE_KEY) / STEP +
                       law.per_velocity * (float(velocity) - MIDDLE_VELOCITY) / STEP;
    const int rounded = int(std::lround(std::clamp(byte, 0.0F, MAX_LAW_BYTE)));
    return uint8_t(filter_controller(law.controller, rounded));
}

void SoundRules::add(const NoteLaw& law) {
    laws.push_back(law);
}

void SoundRules::sort() {
    std::stable_sort(laws.begin(), laws.end(),
                     [](const NoteLaw& a, const NoteLaw& b) { return a.program < b.program; });
    for (unsigned program = 0; program <= GM_PROGRAMS; program++)
        first_law[program] =
            uint16_t(std::count_if(laws.begin(), laws.end(), [program](const NoteLaw& law) {
                return law.program < program;
            }));
}

std::span<const NoteLaw> SoundRules::laws_of(unsigned program) const {
    const size_t first = first_law[program];
    return std::span(laws).subspan(first, first_law[program + 1] - first);
}

DrumKit& GmMap::make_kit(unsigned program) {
    if (kit_numbers[program] == 0) {
        kits.emplace_back();
        kit_numbers[program] = uint8_t(kits.size());
    }
    return kits[kit_numbers[program] - 1U];
}

const DrumKit* GmMap::kit(unsigned program) const {
    return kit_numbers[program] == 0 ? nullptr : &kits[kit_numbers[program] - 1U];
}

const DrumKey* GmMap::find_drum(unsigned program, unsigned key) const {
    for (const unsigned candidate : {program, 0U}) {
        const DrumKit* found = kit(candidate);
        if (found != nullptr && (*found)[key])
            return &*(*found)[key];
    }
    return nullptr;
}

bool is_note_controller(unsigned controller) {
    const ControllerInfo* info = find_controller(controller);
    return info != nullptr && info->scope == ControllerScope::CHANNEL &&
           std::find(std::begin(SHARED_CONTROLLERS), std::end(SHARED_CONTROLLERS), controller) ==
               std::end(SHARED_CONTROLLERS);
}

std::string find_family_conflict(const GmMap& map, const GmSounds& sounds) {
    struct First {
        const ControllerBytes* bytes = nullptr;
        unsigned kit = 0;
        unsigned key = 0;
    };
    std::array<First, MAX_FAMILIES> firsts;
    for (unsigned program = 0; program < GM_PROGRAMS; program++) {
        const DrumKit* kit = map.kit(program);
        for (unsigned key = 0; kit != nullptr && key < NUM_KEYS; key++) {
            if (!(*kit)[key])
                continue;
            const DrumKey& drum = *(*kit)[key];
            const ControllerBytes* bytes = sounds.drums[drum.instrument];
            First& first = firsts[drum.family];
            if (bytes == nullptr)
                continue;
            if (first.bytes == nullptr) {
                first = {bytes, program, key};
                continue;
            }
            const char* difference = find_difference(*first.bytes, *bytes);
            if (difference != nullptr)
                return map.families[drum.family] + ": key " + std::to_string(first.key) +
                       " of kit " + std::to_string(first.kit) + " and key " + std::to_string(key) +
                       " of kit " + std::to_string(program) + " differ in " + difference;
        }
    }
    return "";
}

} // namespace tarquil
