// Lines moved until the filter's spectrum is as near to an envelope as bytes can bring it.

#include "softsynth/lpc/line_refiner.h"

#include <cmath>

#include "softsynth/lpc/exact_math.h"
#include "softsynth/lpc/line_spectrum.h"

namespace tarquil {

namespace {

using Lines = std::array<uint8_t, LPC_ORDER>;

constexpr int STEPS[] = {6, 3, 1};
constexpr int MAX_ROUNDS = 6; // at each step

const std::array<double, 256>& line_cosines() {
    static const auto cosines = [] {
        std::array<double, 256> table{};
        for (size_t i = 0; i < table.size(); i++)
            table[i] = cos_half_turns((double(i) + 0.5) / 256.0);
        return table;
    }();
    return cosines;
}

const std::array<double, ENVELOPE_POINTS>& point_cosines() {
    static const auto cosines = [] {
        std::array<double, ENVELOPE_POINTS> table{};
        for (size_t i = 0; i < table.size(); i++)
            table[i] = cos_half_turns((double(i) + 0.5) / double(ENVELOPE_POINTS));
        return table;
    }();
    return cosines;
}

struct Logarithms {
    std::array<double, ENVELOPE_POINTS> values{};
    size_t count = 0;
};

LineCosines cosines_of(const Lines& lines) {
    LineCosines cosines{};
    for (size_t i = 0; i < LPC_ORDER; i++)
        cosines[i] = line_cosines()[lines[i]];
    return cosines;
}

struct Difference {
    double average = 0.0;
    double variance = 0.0;
};

// Of log envelope + log |A|^2, which is level where the filter follows the envelope.
Difference difference(const Lines& lines, const Logarithms& envelope) {
    const LineCosines cosines = cosines_of(lines);
    double sum = 0.0;
    double squares = 0.0;
    for (size_t i = 0; i < envelope.count; i++) {
        const double d =
            envelope.values[i] + std::log(predictor_power(cosines, point_cosines()[i]));
        sum += d;
        squares += d * d;
    }
    const double average = sum / double(envelope.count);
    return {average, squares / double(envelope.count) - average * average};
}

Logarithms logarithms(const Envelope& envelope, size_t num_points) {
    Logarithms logs;
    logs.count = num_points;
    for (size_t i = 0; i < num_points; i++)
        logs.values[i] = std::log(envelope[i]);
    return logs;
}

bool can_move(const Lines& lines, size_t index, int moved) {
    const int lowest = index == 0 ? 0 : lines[index - 1] + MIN_LINE_DISTANCE;
    const int highest = index + 1 == LPC_ORDER ? TOP_LINE : lines[index + 1] - MIN_LINE_DISTANCE;
    return moved >= lowest && moved <= highest;
}

// True when any line has moved.
bool improve(Lines& lines, int step, const Logarithms& envelope, double& best) {
    bool has_moved = false;
    for (size_t i = 0; i < LPC_ORDER; i++) {
        for (const int move : {step, -step}) {
            if (!can_move(lines, i, lines[i] + move))
                continue;
            Lines tried = lines;
            tried[i] = uint8_t(lines[i] + move);
            const double variance = difference(tried, envelope).variance;
            if (variance >= best)
                continue;
            best = variance;
            lines = tried;
            has_moved = true;
            break;
        }
    }
    return has_moved;
}

// The filter's output at level 1 has the spectrum prod (1 - k^2) / |A|^2.
double reflected_power(const Lines& lines) {
    double product = 1.0;
    for (const double k : reflections_of_predictor(predictor_of_lines(cosines_of(lines))))
        product *= 1.0 - k * k;
    return product;
}

Fit make_fit(const Lines& lines, const Logarithms& envelope) {
    constexpr double DECIBELS = 4.342944819032518; // 10 / ln 10
    const Difference left = difference(lines, envelope);
    return {lines, std::sqrt(std::exp(left.average) / reflected_power(lines)),
            DECIBELS * std::sqrt(std::fmax(left.variance, 0.0))};
}

} // namespace

Fit measure_fit(const Lines& lines, const Envelope& envelope, size_t num_points) {
    return make_fit(lines, logarithms(envelope, num_points));
}

Fit refine_lines(const Lines& lines, const Envelope& envelope, size_t num_points) {
    const Logarithms logs = logarithms(envelope, num_points);
    Lines refined = lines;
    double best = difference(refined, logs).variance;
    for (const int step : STEPS)
        for (int round = 0; round < MAX_ROUNDS && improve(refined, step, logs, best);)
            round++;
    return make_fit(refined, logs);
}

} // namespace tarquil
