// What the parts of the dialect share: sounds, map, channels, master settings and the report.

#pragma once

#include <array>
#include <bitset>
#include <cstdint>

#include "midi/gm/gm_channel.h"
#include "midi/gm/gm_laws.h"
#include "midi/gm/gm_map.h"
#include "midi/gm/gm_report.h"
#include "midi/gm/gm_sounds.h"

namespace tarquil {

// Keys of each channel.
using ChannelKeys = std::array<std::bitset<NUM_KEYS>, NUM_MIDI_CHANNELS>;

struct GmMaster {
    uint16_t volume = MAX_MASTER_VOLUME;
    uint16_t balance = BEND_CENTRE;
    uint16_t fine_tuning = BEND_CENTRE;  // +-100 cents
    uint8_t coarse_tuning = MIDI_CENTRE; // semitones

    [[nodiscard]] double fine_semitones() const {
        return (double(fine_tuning) - BEND_CENTRE) / BEND_CENTRE;
    }
};

struct GmState {
    GmSounds sounds;
    const GmMap* map = nullptr; // never null while playing
    const SoundRules* guest_rules = nullptr;
    std::bitset<GM_PROGRAMS> lawful = std::bitset<GM_PROGRAMS>().set();
    std::bitset<GM_PROGRAMS> lawful_guests;
    const SoundRules no_rules{};
    std::array<GmChannel, NUM_MIDI_CHANNELS> channels;
    GmMaster master;
    bool xg_banks = false;
    GmReport report;

    // The map's for a lawful melodic program, the guests' for one of theirs.
    [[nodiscard]] const SoundRules& rules_of(unsigned program) const {
        if (lawful[program])
            return map->programs;
        return guest_rules != nullptr && lawful_guests[program] ? *guest_rules : no_rules;
    }
};

} // namespace tarquil
