// A steep low-pass for the end of a recording's spectrum.

#include "softsynth/lpc/band_limit.h"

#include "softsynth/lpc/exact_math.h"
#include "softsynth/parameters/constants.h"

namespace tarquil {

namespace {

constexpr double HIGHEST_CUTOFF = 20000.0; // Hz

// Of the filter with the cutoff 1: a section's squared zero, squared pole, and twice the pole's
// distance from the imaginary axis.
struct Prototype {
    double zero_squared;
    double pole_squared;
    double damping;
};
constexpr Prototype PROTOTYPES[] = {
    {18.8242142940, 0.2460216968, 0.8105227476}, {2.7585323641, 0.5608578749, 0.4978464775},
    {1.5221869947, 0.8301670383, 0.2286080902},  {1.2263996969, 0.9643774517, 0.0890211622},
    {1.1419254589, 1.0136638870, 0.0227194523},
};

} // namespace

BandLimit::BandLimit(double cutoff_hz) : is_off(cutoff_hz >= HIGHEST_CUTOFF) {
    if (is_off)
        return;
    const double t = tan_half_turns(cutoff_hz / double(SAMPLE_RATE));
    for (size_t i = 0; i < NUM_SECTIONS; i++) {
        const double zero = 1.0 / PROTOTYPES[i].zero_squared;
        const double pole = 1.0 / PROTOTYPES[i].pole_squared;
        const double damping = PROTOTYPES[i].damping * pole * t;
        const double scale = 1.0 / (t * t + damping + pole);
        sections[i].b0 = float((t * t + zero) * scale);
        sections[i].b1 = float(2.0 * (t * t - zero) * scale);
        sections[i].a1 = float(2.0 * (t * t - pole) * scale);
        sections[i].a2 = float((t * t - damping + pole) * scale);
    }
}

void BandLimit::process(float* samples, uint32_t num_samples) {
    if (is_off)
        return;
    for (Section& section : sections) {
        for (uint32_t i = 0; i < num_samples; i++) {
            const float x = samples[i];
            const float y = section.b0 * x + section.state1;
            section.state1 = section.b1 * x - section.a1 * y + section.state2;
            section.state2 = section.b0 * x - section.a2 * y;
            samples[i] = y;
        }
    }
}

} // namespace tarquil
