// What became of the messages that a dialect was given.

#include "midi/gm/gm_report.h"

#include <algorithm>
#include <iterator>

#include "midi/gm/midi_numbers.h"

namespace tarquil {

namespace {

struct MessageRow {
    const char* name;
    Verdict verdict;
};

constexpr MessageRow MESSAGES[NUM_GM_MESSAGES] = {
    {"notes", Verdict::PLAYED},
    {"drums", Verdict::PLAYED},
    {"drums without a sound", Verdict::IGNORED},
    {"note offs", Verdict::PLAYED},
    {"key pressures", Verdict::IGNORED},
    {"program changes", Verdict::PLAYED},
    {"channel pressures", Verdict::PLAYED},
    {"pitch bends", Verdict::PLAYED},
    {"resets", Verdict::PLAYED},
    {"master volume, balance, tuning", Verdict::PLAYED},
    {"rhythm part assignments", Verdict::PLAYED},
    {"other exclusive messages", Verdict::IGNORED},
    {"other system messages", Verdict::IGNORED},
    {"damaged messages", Verdict::IGNORED},
};

constexpr const char* SHORTFALLS[NUM_GM_SHORTFALLS] = {
    "bends beyond an octave, clamped",
    "notes beyond the keys, moved by octaves",
    "sounds taken from sounding notes: more than 16 at once",
    "notes that the pedal held, released while voices were scarce",
    "data entries without a known parameter, ignored",
    "programs of another bank, played from the first",
    "controllers without a meaning for drums, ignored",
};

struct ControllerRow {
    unsigned number;
    const char* name;
    Verdict verdict;
};

constexpr ControllerRow CONTROLLERS[] = {
    {MIDI_BANK_MSB, "bank", Verdict::APPROXIMATED},
    {MIDI_MODULATION, "modulation", Verdict::PLAYED},
    {2, "breath", Verdict::IGNORED},
    {4, "foot", Verdict::IGNORED},
    {MIDI_PORTAMENTO_TIME, "portamento time", Verdict::PLAYED},
    {MIDI_DATA_MSB, "data entry", Verdict::PLAYED},
    {MIDI_VOLUME, "volume", Verdict::PLAYED},
    {8, "balance", Verdict::IGNORED},
    {MIDI_PAN, "pan", Verdict::PLAYED},
    {MIDI_EXPRESSION, "expression", Verdict::PLAYED},
    {MIDI_BANK_LSB, "bank, fine", Verdict::APPROXIMATED},
    {MIDI_DATA_LSB, "data entry, fine", Verdict::PLAYED},
    {MIDI_SUSTAIN, "sustain pedal", Verdict::PLAYED},
    {MIDI_PORTAMENTO, "portamento switch", Verdict::PLAYED},
    {MIDI_SOSTENUTO, "sostenuto pedal", Verdict::PLAYED},
    {MIDI_SOFT, "soft pedal", Verdict::PLAYED},
    {MIDI_RESONANCE, "resonance", Verdict::PLAYED},
    {MIDI_RELEASE, "release time", Verdict::PLAYED},
    {MIDI_ATTACK, "attack time", Verdict::PLAYED},
    {MIDI_BRIGHTNESS, "brightness", Verdict::PLAYED},
    {MIDI_DECAY, "decay time", Verdict::PLAYED},
    {MIDI_VIBRATO_RATE, "vibrato rate", Verdict::PLAYED},
    {MIDI_VIBRATO_DEPTH, "vibrato depth", Verdict::PLAYED},
    {MIDI_VIBRATO_DELAY, "vibrato delay", Verdict::PLAYED},
    {84, "portamento from a key", Verdict::IGNORED},
    {MIDI_REVERB, "reverb", Verdict::PLAYED},
    {92, "tremolo", Verdict::IGNORED},
    {MIDI_CHORUS, "chorus", Verdict::APPROXIMATED},
    {94, "detune", Verdict::IGNORED},
    {95, "phaser", Verdict::IGNORED},
    {MIDI_DATA_INCREMENT, "data increment", Verdict::PLAYED},
    {MIDI_DATA_DECREMENT, "data decrement", Verdict::PLAYED},
    {MIDI_NRPN_LSB, "NRPN, fine", Verdict::PLAYED},
    {MIDI_NRPN_MSB, "NRPN", Verdict::PLAYED},
    {MIDI_RPN_LSB, "RPN, fine", Verdict::PLAYED},
    {MIDI_RPN_MSB, "RPN", Verdict::PLAYED},
    {MIDI_SOUND_OFF, "all sound off", Verdict::PLAYED},
    {MIDI_RESET, "reset controllers", Verdict::PLAYED},
    {122, "local control", Verdict::IGNORED},
    {MIDI_ALL_NOTES_OFF, "all notes off", Verdict::PLAYED},
    {MIDI_OMNI_OFF, "omni off", Verdict::PLAYED},
    {MIDI_OMNI_ON, "omni on", Verdict::PLAYED},
    {MIDI_MONO, "mono", Verdict::PLAYED},
    {MIDI_POLY, "poly", Verdict::PLAYED},
};

const ControllerRow* find_row(unsigned controller) {
    const auto* const row =
        std::find_if(std::begin(CONTROLLERS), std::end(CONTROLLERS),
                     [controller](const ControllerRow& r) { return r.number == controller; });
    return row == std::end(CONTROLLERS) ? nullptr : row;
}

} // namespace

const char* gm_message_name(GmMessage kind) {
    return MESSAGES[unsigned(kind)].name;
}

const char* gm_shortfall_name(GmShortfall shortfall) {
    return SHORTFALLS[unsigned(shortfall)];
}

Verdict gm_message_verdict(GmMessage kind) {
    return MESSAGES[unsigned(kind)].verdict;
}

const char* midi_controller_name(unsigned controller) {
    const ControllerRow* row = find_row(controller);
    return row == nullptr ? "" : row->name;
}

Verdict midi_controller_verdict(unsigned controller) {
    const ControllerRow* row = find_row(controller);
    return row == nullptr ? Verdict::IGNORED : row->verdict;
}

} // namespace tarquil
