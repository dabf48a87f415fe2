// Pulses at a moving pitch.

#include "softsynth/lpc/pulse_train.h"

#include <cmath>

#include "softsynth/lpc/exact_math.h"
#include "softsynth/parameters/constants.h"

namespace tarquil {

namespace {

constexpr size_t NUM_PLACES = 64; // within one sample
constexpr size_t PULSE_LENGTH_ = PulseTrain::PULSE_LENGTH;

// The sinc times a Hann window that ends at +-PULSE_LENGTH_ / 2.
constexpr double pulse_at(double x) {
    const double distance = x < 0.0 ? -x : x;
    if (distance < 1e-9)
        return 1.0;
    const double window = 0.5 + 0.5 * cos_half_turns(distance / (PULSE_LENGTH_ / 2.0));
    const auto whole = int(distance);
    const double sine = sin_half_turns(distance - whole);
    return (whole % 2 == 0 ? sine : -sine) / (PI * distance) * window;
}

using PulseShapes = std::array<std::array<float, PULSE_LENGTH_>, NUM_PLACES>;

// Tap i of a pulse that lies place / NUM_PLACES samples behind tap PULSE_LENGTH_ / 2 - 1.
constexpr PulseShapes make_shapes() {
    PulseShapes shapes{};
    for (size_t place = 0; place < NUM_PLACES; place++)
        for (size_t i = 0; i < PULSE_LENGTH_; i++)
            shapes[place][i] = float(pulse_at(double(i) - (PULSE_LENGTH_ / 2.0 - 1.0) -
                                              double(place) / double(NUM_PLACES)));
    return shapes;
}

constexpr PulseShapes SHAPES = make_shapes();

} // namespace

void PulseTrain::set_pitch(double hz) {
    period = double(SAMPLE_RATE) / hz;
    amplitude = float(std::sqrt(period));
}

float PulseTrain::next() {
    // A pulse of the coming sample interval is added before its first tap is due.
    if (until_pulse < 1.0) {
        add_pulse(until_pulse);
        until_pulse += period;
    }
    until_pulse -= 1.0;
    const float sample = pending[position];
    pending[position] = 0.0F;
    position = (position + 1) % PULSE_LENGTH_;
    return sample;
}

void PulseTrain::add_pulse(double samples_ahead) {
    const auto place = size_t(samples_ahead * double(NUM_PLACES));
    for (size_t i = 0; i < PULSE_LENGTH_; i++)
        pending[(position + i) % PULSE_LENGTH_] += amplitude * SHAPES[place][i];
}

} // namespace tarquil
