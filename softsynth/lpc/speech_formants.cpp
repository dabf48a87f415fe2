// What a frame's filter does to a spectrum.

#include "softsynth/lpc/speech_formants.h"

#include <cmath>

#include "softsynth/lpc/exact_math.h"
#include "softsynth/lpc/line_spectrum.h"
#include "softsynth/parameters/constants.h"

namespace tarquil {

namespace {

constexpr double SEARCH_STEP_HZ = 25.0;

LineCosines cosines_of(const SpeechFrame& frame) {
    LineCosines cosines{};
    for (size_t i = 0; i < LPC_ORDER; i++)
        cosines[i] = cos_half_turns((double(frame.lines[i]) + 0.5) / 256.0);
    return cosines;
}

// The cosine of the place on the bent axis.
double bent_cosine(double warping, double hz) {
    const double angle = 2.0 * PI * hz / SAMPLE_RATE;
    return std::cos(angle +
                    2.0 * std::atan(warping * std::sin(angle) / (1.0 - warping * std::cos(angle))));
}

} // namespace

double frame_density_db(const SpeechFrame& frame, double warping, double hz) {
    const LineCosines cosines = cosines_of(frame);
    double power = level_amplitude(frame.level * 256U);
    power *= power;
    for (const double k : reflections_of_predictor(predictor_of_lines(cosines)))
        power *= 1.0 - k * k;
    const double e = double(EMPHASIS);
    const double emphasis = 1.0 + e * e - 2.0 * e * std::cos(2.0 * PI * hz / SAMPLE_RATE);
    return 10.0 *
           std::log10(power / (predictor_power(cosines, bent_cosine(warping, hz)) * emphasis));
}

std::vector<double> find_formants(const SpeechFrame& frame, double warping, double highest_hz) {
    const LineCosines cosines = cosines_of(frame);
    const auto response = [&](double hz) {
        return 1.0 / predictor_power(cosines, bent_cosine(warping, hz));
    };
    std::vector<double> formants;
    double left = response(0.0);
    double middle = response(SEARCH_STEP_HZ);
    for (double hz = SEARCH_STEP_HZ; hz < highest_hz; hz += SEARCH_STEP_HZ) {
        const double right = response(hz + SEARCH_STEP_HZ);
        if (middle > left && middle >= right)
            formants.push_back(hz);
        left = middle;
        middle = right;
    }
    return formants;
}

} // namespace tarquil
