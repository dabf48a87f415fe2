// What a controller is for, in a sentence for people.

#include "softsynth/parameters/control_help.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "softsynth/parameters/control_meaning.h"
#include "softsynth/parameters/control_text.h"
#include "softsynth/parameters/controller_table.h"
#include "softsynth/parameters/families.h"
#include "softsynth/parameters/influence.h"

namespace tarquil {

namespace {

struct Help {
    std::string_view end; // of the controller's name, or an effect's parameter
    const char* text;
};

// By what a controller's name ends with, the first that fits: rows of a family share their ends.
constexpr Help HELPS[] = {
    {"Main volume", "How loud the program is on its channel"},
    {"Panning", "Where the program stands between left and right"},
    {"Reverb send", "How much of it goes to the reverb"},
    {"Delay send", "How much of it goes to the delay"},
    {"effect 1 type", "What the first insert effect does to the channel's sum"},
    {"effect 2 type", "What the second insert effect does, behind the first"},
    {"Stereo effect type", "What widens the channel's sound, behind its filters"},
    {"Stereo effect wet", "How loud the effect is beside the plain sound"},
    {"Oscillator 1/2 mix", "How much of oscillator 2 replaces oscillator 1"},
    {"Oscillator 3 volume", "How loud oscillator 3 is beside the mix of the others"},
    {"Portamento time", "How long a note glides from the pitch of the last"},
    {"ring modulator", "Multiplies oscillators 1 and 2 in place of their mix, for bell tones"},
    {"modulation source", "What moves it"},
    {"1 source", "What moves the cutoff"},
    {"2 source", "What moves the cutoff as well"},
    {"3 source", "What moves the cutoff as well"},
    {"fine amount", "Small steps of the amount, added to it"},
    {"amount", "How far the source moves it; at the top it multiplies by the source"},
    {"Filter type", "What the filter takes from each voice"},
    {"Filter depth", "How steeply it cuts"},
    {"key follow", "Whether the cutoff moves with the note"},
    {"cutoff", "The frequency where it begins to act"},
    {"resonance", "How much it stresses that frequency"},
    {"filter 1 type", "What this filter does"},
    {"filter 2 type", "What this filter does"},
    {"filter 3 type", "What this filter does"},
    {"filter 4 type", "What this filter does"},
    {"filter 5 type", "What this filter does"},
    {"filter 6 type", "What this filter does"},
    {"LFO 1 type", "The wave of the first low-frequency oscillator"},
    {"LFO 2 type", "The wave of the second low-frequency oscillator"},
    {"speed", "How fast it swings"},
    {"LFO 1 phase", "Where in its wave it starts with each note"},
    {"LFO 2 phase", "Where in its wave it starts with each note"},
    {"1 type", "The wave of the oscillator"},
    {"2 type", "The wave of the oscillator"},
    {"3 type", "The wave of the oscillator"},
    {"coarse tune", "How far from the note it sounds, in whole steps"},
    {"fine tune", "A small detuning, added to the coarse tune"},
    {"spread", "How far apart its copies are tuned"},
    {"copies", "How many of it sound together"},
    {"random phase", "How differently its copies start"},
    {"attack", "How long it rises to full level"},
    {"decay", "How long it falls to the sustain level"},
    {"sustain", "The level while a key is held"},
    {"release", "How long it fades after the key"},
    {"Pitch bend coarse", "The bend that a wheel has set, in the middle none"},
    {"Pitch bend fine", "Small steps of the bend"},
    {"Maximum voices", "How many notes its channel plays at once"},
    {"Retrigger tempo", "The tempo that the repeats keep"},
    {"Retrigger speedup", "How fast the last beat is repeated; 0 lets the sound pass"},
    {"Retrigger wet level", "How much of the sound the repeats replace"},
    {"room size", "How long the reverb rings"},
    {"damping", "How fast the reverb loses its treble"},
    {"width", "How wide the reverb stands between left and right"},
    {"Reverb wet", "How loud the reverb is"},
    {"left time", "How late the echo on the left comes"},
    {"right time", "How late the echo on the right comes"},
    {"feedback", "How much of each echo is echoed again"},
    {"Aux cutoff", "The bass below this reaches neither reverb nor delay"},
    {"pre gain", "How loud the sum goes into the compressor"},
    {"threshold", "The level above which the band is held back"},
    {"ratio", "How much of a rise above the threshold is taken away"},
    {"attack time", "How fast it reacts to a rise"},
    {"release time", "How fast it lets go again"},
    {"makeup gain", "How loud the band is behind the compressor"},
    {"crossover 1/2", "Where the lowest band ends and the second begins"},
    {"crossover 2/3", "Where the second band ends and the third begins"},
    {"crossover 3/4", "Where the third band ends and the highest begins"},
    {"LPC select", "Which words a speech program would say"},
    {"LPC speed", "How fast it would say them"},
    {"gain", "How much it raises or lowers what it acts on"},
};

// By an effect's own name of a parameter.
constexpr Help EFFECT_HELPS[] = {
    {"Threshold", "The level above which it acts"},
    {"Drive", "How hard it bends what is above the threshold"},
    {"Post gain", "How loud it is behind the distortion"},
    {"Asymmetry", "How differently it bends the two halves of the wave"},
    {"Ratio", "How much of a rise above the threshold is taken away"},
    {"Attack", "How fast it reacts to a rise"},
    {"Release", "How fast it lets go again"},
    {"Makeup", "How loud it is behind the compressor"},
    {"Bits off", "How many bits of each sample are dropped"},
    {"Hold", "How many samples each one stands for"},
    {"Cutoff", "The frequency where the filter begins to act"},
    {"Resonance", "How much the filter stresses that frequency"},
    {"Type", "What the filter takes from the sound"},
    {"Depth", "How steeply the filter cuts"},
    {"Amount", "How much the wave is bent, for brightness"},
    {"Left time", "How late the echo on the left comes"},
    {"Right time", "How late the echo on the right comes"},
    {"Feedback", "How much of the effect comes back into it"},
    {"Delay", "How late the doubled sound comes"},
    {"LFO speed", "How fast the delay swings"},
    {"LFO depth", "How far the delay swings"},
    {"LFO wave", "The wave in which the delay swings"},
};

const char* find_help(std::string_view name, const Help* first, const Help* last) {
    const Help* const found =
        std::find_if(first, last, [&](const Help& help) { return name.ends_with(help.end); });
    return found != last ? found->text : "";
}

std::string meaning_text(unsigned number, const ControllerBytes& bytes) {
    const ControlMeaning meaning = meaning_of(number, bytes);
    if (meaning.label[0] != '\0')
        return find_help(meaning.label, std::begin(EFFECT_HELPS), std::end(EFFECT_HELPS));
    return find_help(find_controller(number)->name, std::begin(HELPS), std::end(HELPS));
}

// Why a controller that has no effect has none, empty for one of another family.

const char* effect_reason(unsigned number, const ControllerBytes& bytes) {
    for (const EffectRows& rows : {mono_effect_rows(0), mono_effect_rows(1), STEREO_EFFECT_ROWS}) {
        const bool is_parameter = number - rows.first_parameter < NUM_EFFECT_PARAMETERS;
        const bool is_wet = rows.type == STEREO_EFFECT_ROWS.type && number == CTRL_CHANFX2_WET;
        if (!is_parameter && !is_wet)
            continue;
        if (bytes[rows.type] == 0)
            return "the effect is off";
        return meaning_of(number, bytes).label[0] == '\0'
                   ? "this effect does not have it"
                   : "the effect's filter is off or does not have it";
    }
    return "";
}

const char* modulation_reason(unsigned number, const ControllerBytes& bytes) {
    for (unsigned slot = 0; slot < NUM_MODULATION_SLOTS; slot++) {
        const ModulationRows rows = modulation_rows(slot);
        if (number != rows.amount && number != rows.fine_amount)
            continue;
        if (bytes[rows.source] == 0)
            return "no source is chosen";
        if (number == rows.fine_amount && bytes[rows.amount] == MULTIPLYING_AMOUNT)
            return "the amount multiplies";
        return slot < RESONANCE_SLOT ? "that oscillator is not heard" : "the filter is off";
    }
    return "";
}

const char* oscillator_reason(unsigned number, const ControllerBytes& bytes) {
    if (number == CTRL_OSC1_OSC2_MIX)
        return "ring modulation takes its place";
    for (unsigned i = 0; i < NUM_OSCILLATORS; i++) {
        const OscillatorRows rows = oscillator_rows(i);
        if (number == rows.random_phase)
            return "that of oscillator 1 is for all";
        if (number == rows.spread && bytes[rows.copies] == 0)
            return "there is one copy only";
        if (number == rows.coarse_tune || number == rows.fine_tune || number == rows.spread ||
            number == rows.copies)
            return "the oscillator is off, or not in the mix";
    }
    return "";
}

const char* lfo_reason(unsigned number, const ControllerBytes& bytes) {
    for (unsigned i = 0; i < NUM_LFOS; i++) {
        const LfoRows rows = lfo_rows(i);
        if (number == rows.speed || number == rows.phase)
            return bytes[rows.type] == 0 ? "the LFO is off" : "nothing is moved by this LFO";
    }
    return "";
}

const char* filter_reason(unsigned number, const ControllerBytes& bytes) {
    switch (number) {
    case CTRL_FILTER1_DEPTH:
        return bytes[CTRL_FILTER1_TYPE] == 0 ? "the filter is off"
                                             : "this type has a slope of its own";
    case CTRL_FILTER1_CUTOFF:
    case CTRL_FILTER1_RESONANCE:
    case CTRL_FILTER1_KEY_FOLLOW:
        return "the filter's type or depth is off";
    default:
        break;
    }
    const std::string_view name = find_controller(number)->name;
    if (name.find("filter") == std::string_view::npos)
        return "";
    return name.ends_with("gain") ? "this type of filter has no gain" : "the filter is off";
}

const char* other_reason(unsigned number, const ControllerBytes& /*bytes*/) {
    switch (number) {
    case CTRL_LPC_SELECT:
    case CTRL_LPC_SPEED:
        return "it is kept with the sound, but nothing speaks";
    case CTRL_RETRIGGER_BPM:
    case CTRL_RETRIGGER_WET_LEVEL:
        return "the speedup is 0";
    default:
        return "nothing is moved by this envelope";
    }
}

} // namespace

std::string control_range(unsigned number, const ControllerBytes& bytes) {
    const ControllerChoices& range = find_controller(number)->choices;
    const ControlMeaning meaning = meaning_of(number, bytes);
    if (meaning.choices.empty())
        return control_text(number, range.first, bytes) + " to " +
               control_text(number, range.last, bytes);
    constexpr size_t MOST_SHOWN = 6;
    std::string list;
    for (size_t i = 0; i < std::min(meaning.choices.size(), MOST_SHOWN); i++)
        list += std::string(i > 0 ? ", " : "") + meaning.choices[i];
    return list + (meaning.choices.size() > MOST_SHOWN ? " or others" : "");
}

std::string control_help(unsigned number, const ControllerBytes& bytes) {
    std::string text = meaning_text(number, bytes);
    if (!text.empty() && meaning_of(number, bytes).choices.empty())
        text += ", from " + control_range(number, bytes);
    return text;
}

std::string why_without_effect(unsigned number, const ControllerBytes& bytes) {
    if (meaning_of(number, bytes).is_used)
        return "";
    for (const auto family : {effect_reason, modulation_reason, oscillator_reason, lfo_reason,
                              filter_reason, other_reason}) {
        const char* const reason = family(number, bytes);
        if (reason[0] != '\0')
            return reason;
    }
    return "";
}

bool acts_from_next_note(unsigned number) {
    for (unsigned slot = 0; slot < NUM_MODULATION_SLOTS; slot++) {
        const ModulationRows rows = modulation_rows(slot);
        if (number == rows.source || number == rows.amount || number == rows.fine_amount)
            return true;
    }
    for (unsigned i = 0; i < NUM_OSCILLATORS; i++) {
        const OscillatorRows rows = oscillator_rows(i);
        const EnvelopeRows envelope = envelope_rows(i);
        for (const unsigned own : {rows.type, rows.coarse_tune, rows.fine_tune, rows.spread,
                                   rows.copies, rows.random_phase, envelope.attack, envelope.decay,
                                   envelope.sustain, envelope.release}) {
            if (number == own)
                return true;
        }
    }
    for (unsigned i = 0; i < NUM_LFOS; i++) {
        if (number == lfo_rows(i).type || number == lfo_rows(i).phase)
            return true;
    }
    switch (number) {
    case CTRL_FILTER1_TYPE:
    case CTRL_FILTER1_DEPTH:
    case CTRL_FILTER1_KEY_FOLLOW:
    case CTRL_OSC1_OSC2_RING_MODULATOR:
    case CTRL_PORTAMENTO_TIME:
    case CTRL_CHAN_MAX_VOICES:
        return true;
    default:
        return false;
    }
}

} // namespace tarquil
