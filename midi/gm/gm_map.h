// What a General MIDI set says beside its sounds: laws of programs, and drum kits.

#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "midi/gm/gm_laws.h"
#include "midi/gm/gm_sounds.h"

namespace tarquil {

// A controller that each note sets anew, from the sound's own byte:
//   byte + per_octave * (key - 60) / 12 + per_velocity * (velocity - 100) / 12, within 0..126
// (127 means another thing for amounts).  Only controllers that a voice reads once, at its start.
struct NoteLaw {
    uint8_t program = 0;
    uint8_t controller = 0;
    float per_octave = 0.0F;
    float per_velocity = 0.0F;
};

// The byte of a note under the law, of a sound whose byte is `base`.
uint8_t law_byte(const NoteLaw& law, uint8_t base, unsigned key, unsigned velocity);

// A solo sound's own vibrato, which comes in after each new note.
struct OwnVibrato {
    float hz = 5.5F;
    float cents = 0.0F;
    float delay_seconds = 0.0F;
    float rise_seconds = 0.0F;
};

// What evens the keys and the velocities of a sound out, in dB: notes away from the key `at` get
// softer, by `below` and `above` an octave, and `per_velocity` is for each 12 of velocity above
// 127. The engine's velocity carries it, so brightness follows.
struct LevelLaw {
    uint8_t at = 60;
    float below = 0.0F; // at most 0, as is:
    float above = 0.0F;
    float per_velocity = 0.0F;

    [[nodiscard]] double gain(unsigned key, unsigned velocity) const;
};

// The laws of 128 sounds.
class SoundRules {
  public:
    std::array<VelocityLaw, GM_PROGRAMS> velocity{};
    std::array<LevelLaw, GM_PROGRAMS> level{};
    std::array<OwnVibrato, GM_PROGRAMS> vibrato{};

    void add(const NoteLaw& law); // before sort
    void sort();
    [[nodiscard]] std::span<const NoteLaw> laws_of(unsigned program) const;
    [[nodiscard]] const std::vector<NoteLaw>& all_laws() const { return laws; }

  private:
    std::vector<NoteLaw> laws; // by program
    std::array<uint16_t, GM_PROGRAMS + 1> first_law{};
};

inline constexpr unsigned MAX_FAMILIES = 16; // the second engine's channels
inline constexpr unsigned MAX_CHOKES = 8;
inline constexpr unsigned NUM_KEYS = 128;

// What a key of a kit plays.
struct DrumKey {
    uint8_t family = 0;
    uint8_t instrument = 0; // of the drum bank
    uint8_t note = 60;      // that the instrument plays
    uint8_t velocity_percent = 100;
    uint8_t pan = 64;          // as controller 10
    uint16_t milliseconds = 0; // until its note-off; 0: when the key is released
    uint8_t num_chokes = 0;
    std::array<uint8_t, MAX_CHOKES> chokes{}; // keys that it ends
};

using DrumKit = std::array<std::optional<DrumKey>, NUM_KEYS>;

class GmMap {
  public:
    std::string title;
    std::string melodic_bank; // file names, relative to the map's own folder
    std::string drum_bank;
    SoundRules programs;
    SoundRules drums;
    std::vector<std::string> families;

    // The kit of program `program`, made if there is none yet.
    DrumKit& make_kit(unsigned program);
    [[nodiscard]] const DrumKit* kit(unsigned program) const;

    // What `key` plays in the kit `program`: its own, else kit 0's; null: nothing.
    [[nodiscard]] const DrumKey* find_drum(unsigned program, unsigned key) const;

  private:
    std::vector<DrumKit> kits;
    std::array<uint8_t, GM_PROGRAMS> kit_numbers{}; // 1 + index of the kit, 0: none
};

// True for a channel controller that a voice reads at its start only, so that notes may differ in
// it.
bool is_note_controller(unsigned controller);

// Where two drums of one family differ in what all notes of a channel share: "hats: keys 42 and 46
// of kit 0 differ in filter1_cutoff"; empty: nowhere.
std::string find_family_conflict(const GmMap& map, const GmSounds& sounds);

} // namespace tarquil
