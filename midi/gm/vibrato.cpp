// Vibrato by bends.

#include "midi/gm/vibrato.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "softsynth/parameters/constants.h"

namespace tarquil {

namespace {

// -1..1 from a controller around its centre.
double relative(const GmChannel& channel, unsigned controller) {
    return (double(channel.value(controller)) - MIDI_CENTRE) / MIDI_CENTRE;
}

double own_cents(const OwnVibrato& own, const GmChannel& channel) {
    constexpr double DEPTH_RANGE_CENTS = 50.0;
    return std::max(0.0, own.cents + DEPTH_RANGE_CENTS * relative(channel, MIDI_VIBRATO_DEPTH));
}

} // namespace

bool Vibrato::is_wanted(const OwnVibrato& own, const GmChannel& channel) {
    return channel.modulation_cents() > 0.0 || own_cents(own, channel) > 0.0;
}

double Vibrato::step(const OwnVibrato& own, const GmChannel& channel, uint32_t time) {
    constexpr double CENTS_PER_SEMITONE = 100.0;
    constexpr double SHORTEST_RISE_SECONDS = 0.001;
    // At their ends: half to twice the rate, a quarter to four times the delay.
    const double hz = own.hz * std::exp2(relative(channel, MIDI_VIBRATO_RATE));
    const double delay = own.delay_seconds * std::exp2(2.0 * relative(channel, MIDI_VIBRATO_DELAY));
    const double since_note = double(time - note_start) / SAMPLE_RATE;
    const double rise = std::max<double>(own.rise_seconds, SHORTEST_RISE_SECONDS);
    const double part = std::clamp((since_note - delay) / rise, 0.0, 1.0);
    const double cents = channel.modulation_cents() + part * own_cents(own, channel);
    const double value = cents / CENTS_PER_SEMITONE * std::sin(2.0 * std::numbers::pi * phase);
    phase += hz * PERIOD / SAMPLE_RATE;
    phase -= std::floor(phase);
    return value;
}

} // namespace tarquil
