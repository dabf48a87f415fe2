// The modulation as lines from its sources to what they move.

#include "editor/plots/routing_plot.h"

#include <algorithm>
#include <cmath>

#include "softsynth/parameters/controller_display.h"
#include "softsynth/parameters/families.h"
#include "softsynth/parameters/influence.h"

namespace tarquil {

namespace {

constexpr unsigned NUM_SOURCES = INFL_END_MARKER - INFL_ENV1;
constexpr double NAME_WIDTH = 84.0;

} // namespace

void RoutingPlot::draw(Canvas& canvas, UiHost& host, const WidgetState& /*state*/) {
    const ControllerBytes& bytes = host.get_model().get_state().bytes;
    canvas.fill(area, theme::WELL, 4);
    const Rect inside = area.inset(10, 8);
    const auto row = [&](unsigned index, unsigned count) {
        return inside.y + inside.h * (index + 0.5) / count;
    };
    bool is_source_used[NUM_SOURCES + 1] = {};
    for (unsigned slot = 0; slot < NUM_MODULATION_SLOTS; slot++) {
        const ModulationRows rows = modulation_rows(slot);
        const unsigned source = bytes[rows.source];
        const bool is_used = source != INFL_NONE;
        is_source_used[source] = true;
        const double y = row(slot, NUM_MODULATION_SLOTS);
        canvas.text({inside.right() - NAME_WIDTH - 16, y - 8, NAME_WIDTH + 16, 16},
                    MODULATION_TARGET_NAMES[slot],
                    {theme::SMALL, is_used ? theme::TEXT : theme::TEXT_DIM, Align::RIGHT});
        if (!is_used)
            continue;
        const bool multiplies = bytes[rows.amount] == MULTIPLYING_AMOUNT;
        const ControllerInfo& info = *find_controller(rows.amount);
        const double part = std::abs(double(map_char_to_float(rows.amount, bytes[rows.amount]))) /
                            std::abs(double(info.mapping.offset));
        canvas.curve({inside.x + NAME_WIDTH - 6, row(source - INFL_ENV1, NUM_SOURCES)},
                     {inside.right() - NAME_WIDTH - 22, y},
                     multiplies ? theme::WARM : theme::PARTS[(source - 1) % 5],
                     1.0 + 3.5 * std::min(1.0, part));
    }
    for (unsigned source = 0; source < NUM_SOURCES; source++) {
        const double y = row(source, NUM_SOURCES);
        canvas.text(
            {inside.x, y - 8, NAME_WIDTH, 16}, INFLUENCE_NAMES[source + INFL_ENV1],
            {theme::SMALL, is_source_used[source + INFL_ENV1] ? theme::TEXT : theme::TEXT_DIM});
    }
}

} // namespace tarquil
