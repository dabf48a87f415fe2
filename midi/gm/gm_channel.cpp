// What MIDI messages have set on one of the sixteen channels.

#include "midi/gm/gm_channel.h"

#include <algorithm>

#include "midi/gm/gm_laws.h"

namespace tarquil {

namespace {

constexpr unsigned NULL_PARAMETER = 127;

// NRPN MSBs of the engine's own numbers 0..127 and 128..205.
constexpr unsigned ENGINE_LOW_NRPN = 0x54;
constexpr unsigned ENGINE_HIGH_NRPN = 0x55;

// Bank select MSBs of GM2, and of XG.
constexpr unsigned GM2_RHYTHM_BANK = 120;
constexpr unsigned GM2_MELODIC_BANK = 121;
constexpr unsigned XG_RHYTHM_BANK = 127;

constexpr uint16_t data14(unsigned msb, unsigned lsb) {
    return uint16_t(msb << 7U | lsb);
}

// GS, XG: NRPN MSB 1.
unsigned sound_controller(unsigned lsb) {
    switch (lsb) {
    case 0x08:
        return MIDI_VIBRATO_RATE;
    case 0x09:
        return MIDI_VIBRATO_DEPTH;
    case 0x0A:
        return MIDI_VIBRATO_DELAY;
    case 0x20:
        return MIDI_BRIGHTNESS;
    case 0x21:
        return MIDI_RESONANCE;
    case 0x63:
        return MIDI_ATTACK;
    case 0x64:
        return MIDI_DECAY;
    case 0x66:
        return MIDI_RELEASE;
    default:
        return 0;
    }
}

} // namespace

void GmChannel::set_defaults(unsigned index) {
    constexpr unsigned FIRST_RELATIVE = MIDI_RESONANCE;
    constexpr unsigned LAST_RELATIVE = MIDI_VIBRATO_DELAY;
    controllers.fill(0);
    std::fill(&controllers[FIRST_RELATIVE], &controllers[LAST_RELATIVE] + 1, uint8_t(MIDI_CENTRE));
    set_value(MIDI_VOLUME, DEFAULT_VOLUME);
    set_value(MIDI_PAN, MIDI_CENTRE);
    set_value(MIDI_REVERB, DEFAULT_REVERB);
    program = 0;
    is_rhythm = is_rhythm_by_default = index == RHYTHM_CHANNEL;
    is_mono = false;
    bend_range = data14(2, 0);
    fine_tuning = BEND_CENTRE;
    coarse_tuning = BEND_CENTRE;
    modulation_range = data14(0, 64); // 50 cents
    overrides.fill(NO_OVERRIDE);
    reset_controllers();
}

void GmChannel::reset_controllers() {
    set_value(MIDI_MODULATION, 0);
    set_value(MIDI_EXPRESSION, 127);
    for (const unsigned pedal : {MIDI_SUSTAIN, MIDI_PORTAMENTO, MIDI_SOSTENUTO, MIDI_SOFT})
        set_value(pedal, 0);
    bend = BEND_CENTRE;
    pressure = 0;
    parameter_msb = parameter_lsb = NULL_PARAMETER;
    data_target = DataTarget::NOTHING;
}

void GmChannel::set_program(unsigned number, bool xg_banks) {
    program = uint8_t(number);
    overrides.fill(NO_OVERRIDE);
    const unsigned bank = value(MIDI_BANK_MSB);
    if (bank == GM2_RHYTHM_BANK || (bank == XG_RHYTHM_BANK && xg_banks))
        is_rhythm = true;
    else if (bank == GM2_MELODIC_BANK)
        is_rhythm = false;
    else
        is_rhythm = is_rhythm_by_default;
}

void GmChannel::select_parameter(unsigned controller, unsigned value) {
    is_registered = controller == MIDI_RPN_LSB || controller == MIDI_RPN_MSB;
    const bool is_msb = controller == MIDI_RPN_MSB || controller == MIDI_NRPN_MSB;
    (is_msb ? parameter_msb : parameter_lsb) = uint8_t(value);
    find_target();
}

void GmChannel::find_target() {
    constexpr DataTarget REGISTERED[] = {DataTarget::BEND_RANGE, DataTarget::FINE_TUNING,
                                         DataTarget::COARSE_TUNING};
    constexpr unsigned MODULATION_RPN = 5;
    data_target = DataTarget::UNKNOWN;
    if (parameter_msb == NULL_PARAMETER && parameter_lsb == NULL_PARAMETER) {
        data_target = DataTarget::NOTHING;
    } else if (is_registered) {
        if (parameter_msb == 0 && parameter_lsb < std::size(REGISTERED))
            data_target = REGISTERED[parameter_lsb];
        else if (parameter_msb == 0 && parameter_lsb == MODULATION_RPN)
            data_target = DataTarget::MODULATION_RANGE;
    } else if (parameter_msb == ENGINE_LOW_NRPN || parameter_msb == ENGINE_HIGH_NRPN) {
        const unsigned number = parameter_lsb + (parameter_msb == ENGINE_HIGH_NRPN ? 128U : 0U);
        if (number < NUM_CONTROLLERS) {
            data_target = DataTarget::ENGINE_CONTROLLER;
            data_number = uint8_t(number);
        }
    } else if (parameter_msb == 1 && sound_controller(parameter_lsb) != 0) {
        data_target = DataTarget::SOUND_CONTROLLER;
        data_number = uint8_t(sound_controller(parameter_lsb));
    }
}

uint16_t* GmChannel::data_value() {
    switch (data_target) {
    case DataTarget::BEND_RANGE:
        return &bend_range;
    case DataTarget::FINE_TUNING:
        return &fine_tuning;
    case DataTarget::COARSE_TUNING:
        return &coarse_tuning;
    case DataTarget::MODULATION_RANGE:
        return &modulation_range;
    default:
        return nullptr;
    }
}

void GmChannel::enter_data(unsigned controller, unsigned value) {
    uint16_t* const data = data_value();
    if (data == nullptr)
        return;
    *data = controller == MIDI_DATA_MSB ? data14(value, *data & 0x7FU) : data14(*data >> 7U, value);
}

void GmChannel::step_data(int step) {
    uint16_t* const data = data_value();
    if (data == nullptr)
        return;
    // RP-018: the bend range steps by cents, of which 100 are a semitone; a coarse tuning by
    // semitones; the others by their finest step.
    constexpr int SEMITONE = 128;
    int value = *data;
    if (data_target == DataTarget::COARSE_TUNING) {
        value += step * SEMITONE;
    } else if (data_target == DataTarget::BEND_RANGE) {
        const int cents =
            std::max(0, value / SEMITONE * 100 + std::min(value % SEMITONE, 99) + step);
        value = cents / 100 * SEMITONE + cents % 100;
    } else {
        value += step;
    }
    *data = uint16_t(std::clamp(value, 0, 16383));
}

double GmChannel::bend_semitones() const {
    const double range = double(bend_range >> 7U) + double(bend_range & 0x7FU) / 100.0;
    const double fine = (double(fine_tuning) - BEND_CENTRE) / BEND_CENTRE;
    return (double(bend) - BEND_CENTRE) / BEND_CENTRE * range + fine;
}

double GmChannel::modulation_cents() const {
    const unsigned depth = std::max<unsigned>(value(MIDI_MODULATION), pressure);
    const double range =
        double(modulation_range >> 7U) * 100.0 + double(modulation_range & 0x7FU) / 1.28;
    return range * depth / 127.0;
}

} // namespace tarquil
