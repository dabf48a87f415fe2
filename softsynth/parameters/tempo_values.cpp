// What the controls that follow a tempo stand for.

#include "softsynth/parameters/tempo_values.h"

#include <cmath>

#include "softsynth/parameters/constants.h"
#include "softsynth/parameters/effect_type.h"
#include "softsynth/parameters/note_length.h"

namespace tarquil {

namespace {

constexpr auto RATE = double(SAMPLE_RATE);

double quarters_of(unsigned number, int byte, const ControllerBytes& bytes) {
    const NoteLength* const length = followed_length(number, byte, bytes);
    return length != nullptr ? length->quarters : 0.0;
}

} // namespace

TempoValues::TempoValues() {
    ControllerBytes sweeping{};
    sweeping[STEREO_EFFECT_ROWS.type] = STEREO_EFFECT_CHORUS;
    for (int byte = 0; byte < 128; byte++) {
        const auto i = size_t(byte);
        delays[i] = quarters_of(CTRL_DELAY_LEFT_TIME, byte, sweeping);
        sweeps[i] = quarters_of(STEREO_EFFECT_ROWS.parameter(1), byte, sweeping);
        beats[i] = quarters_of(CTRL_RETRIGGER_BPM, byte, sweeping);
        for (unsigned lfo = 0; lfo < NUM_LFOS; lfo++)
            lfos[lfo][i] = quarters_of(lfo_rows(lfo).speed, byte, sweeping);
    }
}

void TempoValues::follow(double new_samples_per_quarter) {
    if (new_samples_per_quarter == samples_per_quarter)
        return;
    samples_per_quarter = new_samples_per_quarter;
    if (!is_on())
        return;
    for (unsigned lfo = 0; lfo < NUM_LFOS; lfo++)
        for (size_t byte = 0; byte < lfos[lfo].size(); byte++)
            lfo_speeds[lfo][byte] = float(RATE / (lfos[lfo][byte] * samples_per_quarter));
}

float TempoValues::delay_samples(int byte) const {
    double samples = delays[size_t(byte)] * samples_per_quarter;
    while (samples > LONGEST_DELAY)
        samples *= 0.5;
    return float(std::floor(samples + 0.5));
}

float TempoValues::sweep_hz(int byte) const {
    const double quarters = sweeps[size_t(byte)];
    return quarters > 0.0 ? float(RATE / (quarters * samples_per_quarter)) : 0.0F;
}

double TempoValues::beat_quarters(int byte, double longest) const {
    double quarters = beats[size_t(byte)];
    while (quarters * samples_per_quarter > longest)
        quarters *= 0.5;
    return quarters;
}

} // namespace tarquil
