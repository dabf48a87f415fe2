// One axis of a plot.

#include "tools/plot/plot_axis.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "common/number_text.h"

namespace tarquil {

namespace {

constexpr int MAX_LINEAR_STEPS = 11;

// A step may miss the end of the range by rounding.
constexpr double ROUNDING = 1e-9;

// The smallest 1, 2 or 5 times a power of ten that divides `range` into few enough steps.
double round_step(double range) {
    const double smallest = range / MAX_LINEAR_STEPS * (1 - ROUNDING);
    const double power = std::pow(10.0, std::floor(std::log10(smallest)));
    for (const int multiple : {1, 2, 5}) {
        if (multiple * power >= smallest)
            return multiple * power;
    }
    return 10 * power;
}

} // namespace

std::string axis_number(double value) {
    const bool thousands = std::abs(value) >= 1000;
    return trimmed_number(thousands ? value / 1000 : value, 2) + (thousands ? "k" : "");
}

PlotAxis::PlotAxis(std::string axis_title, bool log_scale, double axis_minimum, double axis_maximum)
    : title(std::move(axis_title)), is_logarithmic(log_scale), minimum(axis_minimum),
      maximum(axis_maximum) {}

PlotAxis PlotAxis::linear(std::string title, double minimum, double maximum, double step) {
    PlotAxis axis(std::move(title), false, minimum, maximum);
    axis.fixed_step = step;
    return axis;
}

PlotAxis PlotAxis::logarithmic(std::string title, double minimum, double maximum) {
    return {std::move(title), true, minimum, maximum};
}

double PlotAxis::position(double value) const {
    if (is_logarithmic)
        return std::log(value / minimum) / std::log(maximum / minimum);
    return (value - minimum) / (maximum - minimum);
}

std::vector<AxisTick> PlotAxis::ticks() const {
    return is_logarithmic ? logarithmic_ticks() : linear_ticks();
}

std::vector<AxisTick> PlotAxis::linear_ticks() const {
    const double step = fixed_step > 0.0 ? fixed_step : round_step(maximum - minimum);
    const int decimals = std::max(0, -int(std::floor(std::log10(step) + ROUNDING)));
    std::vector<AxisTick> result;
    const auto first = long(std::ceil(minimum / step - ROUNDING));
    const auto last = long(std::floor(maximum / step + ROUNDING));
    for (long i = first; i <= last; i++)
        result.push_back({double(i) * step, fixed_number(double(i) * step, decimals)});
    return result;
}

std::vector<AxisTick> PlotAxis::logarithmic_ticks() const {
    std::vector<AxisTick> result;
    const int first = int(std::floor(std::log10(minimum)));
    const int last = int(std::ceil(std::log10(maximum)));
    for (int exponent = first; exponent <= last; exponent++) {
        for (int digit = 1; digit <= 9; digit++) {
            const double value = digit * std::pow(10.0, exponent);
            if (value < minimum * (1 - ROUNDING) || value > maximum * (1 + ROUNDING))
                continue;
            const bool labelled = digit == 1 || digit == 2 || digit == 5;
            result.push_back({value, labelled ? axis_number(value) : std::string()});
        }
    }
    return result;
}

} // namespace tarquil
