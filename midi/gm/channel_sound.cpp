// The controller bytes of a sound as a MIDI channel's settings make them.

#include "midi/gm/channel_sound.h"

#include <algorithm>
#include <cmath>

namespace tarquil {

namespace {

// Choices of the amplitude's modulation source: 1 to 3 are the envelopes.
constexpr unsigned FIRST_ENVELOPE_SOURCE = 1;
constexpr unsigned MULTIPLYING_AMOUNT = 127;

// The chorus of a sound that has no stereo effect of its own: 23 ms, swept at 0.6 Hz by 2 ms.
constexpr uint8_t CHORUS_TYPE = 2;
constexpr uint8_t CHORUS_DELAY = 40;
constexpr uint8_t CHORUS_SPEED = 59;
constexpr uint8_t CHORUS_DEPTH = 88;
constexpr uint8_t CHORUS_SINE = 1;

// Bytes at the ends of the relative controllers: two octaves of cutoff, and resonance.
constexpr double CUTOFF_RANGE = 25.4;
constexpr double RESONANCE_RANGE = 40.0;
constexpr int SOFT_PEDAL_CUTOFF = 8;

uint8_t clamp_byte(double value) {
    return uint8_t(std::lround(std::clamp(value, 0.0, 127.0)));
}

uint8_t own_byte(const GmChannel& channel, const ControllerBytes& own, unsigned controller) {
    const uint8_t chosen = channel.overrides[controller];
    return chosen == GmChannel::NO_OVERRIDE ? own[controller] : chosen;
}

double relative(const GmChannel& channel, unsigned controller, double range) {
    return (double(channel.value(controller)) - MIDI_CENTRE) / MIDI_CENTRE * range;
}

int balance_offset(const GmState& state) {
    return int(state.master.balance >> 7U) - int(MIDI_CENTRE);
}

// Envelope 1 always shapes the amplitude, another one where it is the amplitude's source.
bool shapes_amplitude(const ControllerBytes& own, unsigned envelope) {
    return envelope == 0 ||
           own[CTRL_AMPLITUDE_INFLUENCE_SOURCE] == FIRST_ENVELOPE_SOURCE + envelope;
}

uint8_t time_byte(const GmChannel& channel, const ControllerBytes& own, unsigned first,
                  unsigned controller, unsigned midi_controller) {
    const uint8_t byte = own_byte(channel, own, controller);
    const unsigned value = channel.value(midi_controller);
    if (value == MIDI_CENTRE || !shapes_amplitude(own, controller - first))
        return byte;
    return scaled_time_byte(controller, byte, value);
}

uint8_t stereo_effect_byte(const GmChannel& channel, const ControllerBytes& own,
                           unsigned controller) {
    const unsigned chorus = channel.value(MIDI_CHORUS);
    const uint8_t byte = own_byte(channel, own, controller);
    if (chorus == 0 || own_byte(channel, own, CTRL_CHANFX2_TYPE) != 0)
        return byte;
    switch (controller) {
    case CTRL_CHANFX2_TYPE:
        return CHORUS_TYPE;
    case CTRL_CHANFX2_PARAM1:
        return CHORUS_DELAY;
    case CTRL_CHANFX2_PARAM2:
        return CHORUS_SPEED;
    case CTRL_CHANFX2_PARAM3:
        return CHORUS_DEPTH;
    case CTRL_CHANFX2_PARAM4:
        return CHORUS_SINE;
    case CTRL_CHANFX2_WET:
        return chorus_byte(chorus);
    default:
        return byte;
    }
}

} // namespace

double channel_volume(const GmState& state, const GmChannel& channel, const ControllerBytes& own) {
    return exact_volume(own_byte(channel, own, CTRL_MAIN_VOLUME), channel.value(MIDI_VOLUME),
                        channel.value(MIDI_EXPRESSION), state.master.volume);
}

uint8_t channel_byte(const GmState& state, const GmChannel& channel, const ControllerBytes& own,
                     unsigned controller) {
    const uint8_t byte = own_byte(channel, own, controller);
    switch (controller) {
    case CTRL_MAIN_VOLUME:
        return volume_byte(channel_volume(state, channel, own));
    case CTRL_PANNING:
        return pan_byte(int(channel.value(MIDI_PAN)) + pan_value(byte) - int(MIDI_CENTRE) +
                        balance_offset(state));
    case CTRL_AUX1_LEVEL:
        return reverb_byte(byte, channel.value(MIDI_REVERB));
    case CTRL_CHANFX2_TYPE:
    case CTRL_CHANFX2_PARAM1:
    case CTRL_CHANFX2_PARAM2:
    case CTRL_CHANFX2_PARAM3:
    case CTRL_CHANFX2_PARAM4:
    case CTRL_CHANFX2_WET:
        return stereo_effect_byte(channel, own, controller);
    case CTRL_FILTER1_RESONANCE:
        return clamp_byte(byte + relative(channel, MIDI_RESONANCE, RESONANCE_RANGE));
    case CTRL_FILTER1_CUTOFF:
        return clamp_byte(byte + relative(channel, MIDI_BRIGHTNESS, CUTOFF_RANGE) -
                          (channel.is_down(MIDI_SOFT) ? SOFT_PEDAL_CUTOFF : 0));
    case CTRL_ENV1_ATTACK:
    case CTRL_ENV2_ATTACK:
    case CTRL_ENV3_ATTACK:
        return time_byte(channel, own, CTRL_ENV1_ATTACK, controller, MIDI_ATTACK);
    case CTRL_ENV1_DECAY:
    case CTRL_ENV2_DECAY:
    case CTRL_ENV3_DECAY:
        return time_byte(channel, own, CTRL_ENV1_DECAY, controller, MIDI_DECAY);
    case CTRL_ENV1_RELEASE:
    case CTRL_ENV2_RELEASE:
    case CTRL_ENV3_RELEASE:
        return time_byte(channel, own, CTRL_ENV1_RELEASE, controller, MIDI_RELEASE);
    case CTRL_PORTAMENTO_TIME:
        return channel.is_down(MIDI_PORTAMENTO) ? uint8_t(channel.value(MIDI_PORTAMENTO_TIME))
                                                : byte;
    default:
        return byte;
    }
}

uint8_t drum_byte(const GmState& state, const GmChannel& channel, const ControllerBytes& own,
                  unsigned pan, unsigned controller) {
    switch (controller) {
    case CTRL_MAIN_VOLUME:
        return volume_byte(channel_volume(state, channel, own));
    case CTRL_PANNING:
        return pan_byte(int(channel.value(MIDI_PAN)) + int(pan) - int(MIDI_CENTRE) +
                        balance_offset(state));
    case CTRL_AUX1_LEVEL:
        return reverb_byte(own[controller], channel.value(MIDI_REVERB));
    default:
        return own[controller];
    }
}

std::span<const unsigned> controllers_behind(unsigned controller) {
    static constexpr unsigned LEVEL[] = {CTRL_MAIN_VOLUME};
    static constexpr unsigned PLACE[] = {CTRL_PANNING};
    static constexpr unsigned REVERB[] = {CTRL_AUX1_LEVEL};
    static constexpr unsigned CHORUS[] = {CTRL_CHANFX2_TYPE,   CTRL_CHANFX2_PARAM1,
                                          CTRL_CHANFX2_PARAM2, CTRL_CHANFX2_PARAM3,
                                          CTRL_CHANFX2_PARAM4, CTRL_CHANFX2_WET};
    static constexpr unsigned RESONANCE[] = {CTRL_FILTER1_RESONANCE};
    static constexpr unsigned CUTOFF[] = {CTRL_FILTER1_CUTOFF};
    static constexpr unsigned ATTACK[] = {CTRL_ENV1_ATTACK, CTRL_ENV2_ATTACK, CTRL_ENV3_ATTACK};
    static constexpr unsigned DECAY[] = {CTRL_ENV1_DECAY, CTRL_ENV2_DECAY, CTRL_ENV3_DECAY};
    static constexpr unsigned RELEASE[] = {CTRL_ENV1_RELEASE, CTRL_ENV2_RELEASE, CTRL_ENV3_RELEASE};
    static constexpr unsigned PORTAMENTO[] = {CTRL_PORTAMENTO_TIME};
    switch (controller) {
    case MIDI_VOLUME:
    case MIDI_EXPRESSION:
        return LEVEL;
    case MIDI_PAN:
        return PLACE;
    case MIDI_REVERB:
        return REVERB;
    case MIDI_CHORUS:
        return CHORUS;
    case MIDI_RESONANCE:
        return RESONANCE;
    case MIDI_BRIGHTNESS:
    case MIDI_SOFT:
        return CUTOFF;
    case MIDI_ATTACK:
        return ATTACK;
    case MIDI_DECAY:
        return DECAY;
    case MIDI_RELEASE:
        return RELEASE;
    case MIDI_PORTAMENTO:
    case MIDI_PORTAMENTO_TIME:
        return PORTAMENTO;
    default:
        return {};
    }
}

VelocityLaw find_velocity_law(VelocityLaw wanted, const ControllerBytes& own) {
    if (wanted != VelocityLaw::FROM_SOUND)
        return wanted;
    const bool squares = own[CTRL_AMPLITUDE_INFLUENCE_SOURCE] == FIRST_ENVELOPE_SOURCE &&
                         own[CTRL_AMPLITUDE_INFLUENCE_AMOUNT] == MULTIPLYING_AMOUNT;
    return squares ? VelocityLaw::LINEAR : VelocityLaw::SQUARE;
}

} // namespace tarquil
