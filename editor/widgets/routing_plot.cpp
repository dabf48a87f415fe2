// The modulation as lines from its sources to what they move.

#include "editor/widgets/routing_plot.h"

#include <algorithm>
#include <cmath>

#include "editor/widgets/menu.h"
#include "softsynth/parameters/coarse_and_fine.h"
#include "softsynth/parameters/controller_display.h"
#include "softsynth/parameters/families.h"
#include "softsynth/parameters/influence.h"

namespace tarquil {

namespace {

constexpr unsigned NUM_SOURCES = INFL_END_MARKER - INFL_ENV1;
constexpr double CHIP_WIDTH = 128.0;
constexpr double MARGIN = 8.0;

Color source_color(unsigned source) {
    return theme::PARTS[(source - INFL_ENV1) % std::size(theme::PARTS)];
}

bool can_take(unsigned slot, unsigned source) {
    return int(source) <= find_controller(modulation_rows(slot).source)->choices.last;
}

double amount_of(const ControllerBytes& bytes, unsigned slot) {
    const CoarseAndFine pair = amount_pair(slot);
    return pair_quantity(pair, {bytes[pair.coarse], bytes[pair.fine]});
}

std::string amount_text(const ControllerBytes& bytes, unsigned slot) {
    if (bytes[modulation_rows(slot).amount] == MULTIPLYING_AMOUNT)
        return MULTIPLIES_TEXT;
    return pair_text(amount_pair(slot), amount_of(bytes, slot));
}

Rect chip_of(const Rect& column, unsigned index, unsigned count) {
    const double height = column.h / count;
    return {column.x, column.y + height * index + 1.5, column.w, height - 3};
}

} // namespace

Rect RoutingPlot::source_area(unsigned source) const {
    return chip_of({area.x + MARGIN, area.y + MARGIN, CHIP_WIDTH, area.h - 2 * MARGIN},
                   source - INFL_ENV1, NUM_SOURCES);
}

Rect RoutingPlot::target_area(unsigned slot) const {
    return chip_of(
        {area.right() - MARGIN - CHIP_WIDTH, area.y + MARGIN, CHIP_WIDTH, area.h - 2 * MARGIN},
        slot, NUM_MODULATION_SLOTS);
}

std::optional<unsigned> RoutingPlot::source_at(Point at) const {
    for (unsigned source = INFL_ENV1; source < INFL_END_MARKER; source++) {
        if (source_area(source).contains(at))
            return source;
    }
    return std::nullopt;
}

std::optional<unsigned> RoutingPlot::slot_at(Point at) const {
    for (unsigned slot = 0; slot < NUM_MODULATION_SLOTS; slot++) {
        if (target_area(slot).contains(at))
            return slot;
    }
    return std::nullopt;
}

void RoutingPlot::draw_chip(Canvas& canvas, const Rect& chip, const char* name, Color color,
                            bool is_lit) const {
    canvas.fill(chip, chip.contains(pointer_at) ? theme::HOVER : theme::CONTROL, 4);
    canvas.fill({chip.x, chip.y, 4, chip.h}, color, 2);
    canvas.text({chip.x + 12, chip.y, chip.w - 16, chip.h}, name,
                {theme::NORMAL, is_lit ? theme::TEXT : theme::TEXT_MUTED});
}

void RoutingPlot::draw_lines(Canvas& canvas, const ControllerBytes& bytes) const {
    for (unsigned slot = 0; slot < NUM_MODULATION_SLOTS; slot++) {
        const ModulationRows rows = modulation_rows(slot);
        const unsigned source = bytes[rows.source];
        if (source == INFL_NONE)
            continue;
        const Rect from = source_area(source);
        const Rect to = target_area(slot);
        const double most = largest_pair_quantity(amount_pair(slot));
        const bool multiplies = bytes[rows.amount] == MULTIPLYING_AMOUNT;
        const double part = multiplies ? 1.0 : std::abs(amount_of(bytes, slot)) / most;
        const std::string text = amount_text(bytes, slot);
        const double text_width = canvas.text_width(text, theme::SMALL);
        const Point end{to.x - text_width - 16, to.center().y};
        canvas.curve({from.right() + 4, from.center().y}, end,
                     multiplies ? theme::TEXT : source_color(source),
                     1.0 + 4.0 * std::min(1.0, part));
        // Signed at the line's end: downwards is warm.
        const bool is_negative = !multiplies && amount_of(bytes, slot) < 0.0;
        canvas.text({end.x, to.y, text_width + 8, to.h}, text,
                    {theme::SMALL, is_negative ? theme::WARM : theme::TEXT, Align::RIGHT});
    }
}

void RoutingPlot::draw(Canvas& canvas, UiHost& host, const WidgetState& state) {
    if (!state.is_hovered && !state.is_pressed)
        pointer_at = Point();
    const ControllerBytes& bytes = host.get_model().get_state().bytes;
    canvas.fill(area, theme::WELL, 4);
    draw_lines(canvas, bytes);
    bool has_line = false;
    for (unsigned slot = 0; slot < NUM_MODULATION_SLOTS; slot++)
        has_line = has_line || bytes[modulation_rows(slot).source] != INFL_NONE;
    if (!has_line && !is_dragging)
        canvas.text(area.inset(CHIP_WIDTH + 2 * MARGIN, 0),
                    "Drag a source on the left onto what it is to move",
                    {theme::NORMAL, theme::TEXT_MUTED, Align::CENTER});
    if (chosen && is_dragging)
        canvas.line({source_area(*chosen).right() + 4, source_area(*chosen).center().y}, pointer_at,
                    source_color(*chosen), 2);
    bool is_source_used[INFL_END_MARKER] = {};
    for (unsigned slot = 0; slot < NUM_MODULATION_SLOTS; slot++) {
        const unsigned source = bytes[modulation_rows(slot).source];
        is_source_used[source] = true;
        const bool is_lit = chosen ? can_take(slot, *chosen) : source != INFL_NONE;
        draw_chip(canvas, target_area(slot), MODULATION_TARGET_NAMES[slot],
                  source == INFL_NONE ? theme::GRID_STRONG : source_color(source), is_lit);
    }
    for (unsigned source = INFL_ENV1; source < INFL_END_MARKER; source++) {
        draw_chip(canvas, source_area(source), INFLUENCE_NAMES[source], source_color(source),
                  is_source_used[source] || chosen == source);
        if (chosen == source)
            canvas.frame(source_area(source), source_color(source), 4, 1.5);
    }
}

void RoutingPlot::connect(UiHost& host, unsigned slot) {
    if (!chosen || !can_take(slot, *chosen)) {
        if (chosen)
            host.show_message(std::string(MODULATION_TARGET_NAMES[slot]) + " cannot be moved by " +
                              INFLUENCE_NAMES[*chosen]);
        return;
    }
    EditorModel& model = host.get_model();
    const ModulationRows rows = modulation_rows(slot);
    model.begin_gesture(std::string(MODULATION_TARGET_NAMES[slot]) + " by " +
                        INFLUENCE_NAMES[*chosen]);
    model.set_value(rows.source, int(*chosen));
    if (std::abs(amount_of(model.get_state().bytes, slot)) < 1e-6)
        model.set_value(rows.amount, FIRST_AMOUNT);
    model.end_gesture();
    chosen.reset();
}

void RoutingPlot::open_sources(UiHost& host, unsigned slot) const {
    const unsigned number = modulation_rows(slot).source;
    std::vector<MenuItem> items;
    for (int source = 0; source <= find_controller(number)->choices.last; source++)
        items.push_back({INFLUENCE_NAMES[source], source == host.get_model().value(number), true,
                         [&host, number, source] { host.get_model().set_value(number, source); }});
    host.open_overlay(std::make_unique<Menu>(target_area(slot), std::move(items)));
}

bool RoutingPlot::press(UiHost& host, const Pointer& pointer) {
    if (pointer.button != Pointer::Button::LEFT)
        return false;
    pointer_at = pointer.at;
    if (const auto source = source_at(pointer.at)) {
        chosen = chosen == source ? std::nullopt : source;
        return chosen.has_value(); // perhaps dragged onto a target
    }
    const auto slot = slot_at(pointer.at);
    if (slot && chosen)
        connect(host, *slot);
    else if (slot)
        open_sources(host, *slot);
    else
        chosen.reset();
    return false;
}

void RoutingPlot::drag(UiHost& /*host*/, const Pointer& pointer) {
    pointer_at = pointer.at;
    is_dragging = is_dragging || source_at(pointer.at) != chosen;
}

void RoutingPlot::release(UiHost& host) {
    if (is_dragging) {
        if (const auto slot = slot_at(pointer_at))
            connect(host, *slot);
        chosen.reset();
    }
    is_dragging = false;
}

void RoutingPlot::hover(UiHost& /*host*/, Point at) {
    pointer_at = at;
}

std::string RoutingPlot::tooltip(UiHost& /*host*/) {
    if (slot_at(pointer_at) && !chosen)
        return "Click to choose or remove what moves it";
    if (chosen)
        return "Now click what it is to move";
    return "Drag a source onto what it is to move, or click one after the other\nLines are as "
           "thick as the amount is large";
}

} // namespace tarquil
