// The time axis of the envelope plots.

#include "editor/plots/envelope_axis.h"

#include <algorithm>
#include <cmath>

#include "common/number_text.h"

namespace tarquil {

namespace {

// Of the logarithmic axis: where it turns from nearly linear, and its end.
constexpr double KNEE_SECONDS = 0.002;
constexpr double LAST_SECONDS = 60.0;

} // namespace

EnvelopeAxis::EnvelopeAxis(const Rect& axis_area, bool logarithmic, double longest)
    : area(axis_area), is_logarithmic(logarithmic), last(logarithmic ? LAST_SECONDS : longest) {}

double EnvelopeAxis::x(double seconds) const {
    const double part = is_logarithmic
                            ? std::log1p(seconds / KNEE_SECONDS) / std::log1p(last / KNEE_SECONDS)
                            : seconds / last;
    return area.x + area.w * std::clamp(part, 0.0, 1.0);
}

double EnvelopeAxis::seconds(double x_place) const {
    const double part = std::clamp((x_place - area.x) / area.w, 0.0, 1.0);
    return is_logarithmic ? KNEE_SECONDS * std::expm1(part * std::log1p(last / KNEE_SECONDS))
                          : part * last;
}

std::vector<GridLine> EnvelopeAxis::lines() const {
    if (!is_logarithmic)
        return time_lines(last);
    std::vector<GridLine> made;
    for (const double decade : {0.001, 0.01, 0.1, 1.0, 10.0}) {
        for (const double factor : {1.0, 2.0, 5.0}) {
            const double seconds = decade * factor;
            if (seconds < last)
                made.push_back({seconds, factor == 1.0 ? short_time_text(seconds) : ""});
        }
    }
    return made;
}

double round_time_above(double seconds) {
    double decade = 1e-4;
    while (decade < 1e4) {
        for (const double factor : {1.0, 2.0, 5.0}) {
            if (decade * factor >= seconds)
                return decade * factor;
        }
        decade *= 10.0;
    }
    return decade;
}

std::string short_time_text(double seconds) {
    return seconds < 0.9995 ? trimmed_number(seconds * 1000.0, 1) + " ms"
                            : trimmed_number(seconds, 1) + " s";
}

std::vector<GridLine> time_lines(double seconds) {
    const double step = round_time_above(seconds / 12.0);
    std::vector<GridLine> lines;
    for (int i = 1; step * i < seconds * 0.999; i++)
        lines.push_back({step * i, i % 2 == 0 ? short_time_text(step * i) : std::string()});
    return lines;
}

} // namespace tarquil
