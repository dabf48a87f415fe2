// Plots over time of what follows the host's tempo.

#include "editor/plots/tempo_axis.h"

#include <cmath>

#include "common/number_text.h"
#include "editor/plots/envelope_axis.h"
#include "softsynth/parameters/quantity_text.h"

namespace tarquil {

namespace {

constexpr double MOST_LINES = 16.0;
constexpr double SHORTEST_STEP = 1.0 / 32; // quarter notes

// "1/16", "3/4", "2/1": how many notes of a length have passed, in the longest that fits.
std::string place_text(double quarters) {
    constexpr double WHOLE = 4.0;
    int length = 1;
    double notes = quarters / WHOLE;
    while (notes != std::floor(notes) && length < 128) {
        notes *= 2.0;
        length *= 2;
    }
    return trimmed_number(notes, 0) + "/" + std::to_string(length);
}

} // namespace

std::vector<GridLine> tempo_lines(const ViewState& view, double seconds) {
    if (!view.times.is_on())
        return time_lines(seconds);
    const double quarters = seconds / view.seconds_per_quarter();
    double step = SHORTEST_STEP;
    while (quarters / step > MOST_LINES)
        step *= 2.0;
    std::vector<GridLine> lines;
    for (int i = 1; step * i < quarters * 0.999; i++)
        lines.push_back({step * i * view.seconds_per_quarter(),
                         i % 2 == 0 ? place_text(step * i) : std::string()});
    return lines;
}

void draw_tempo(Canvas& canvas, const Rect& plot, const ViewState& view, double hertz) {
    const std::string text =
        quantity_text(hertz, Unit::HERTZ) + " at " + trimmed_number(view.tempo, 1) + " bpm";
    canvas.text({plot.right() - 168, plot.y + 4, 160, 14}, text,
                {theme::SMALL, theme::TEXT_MUTED, Align::RIGHT});
}

} // namespace tarquil
