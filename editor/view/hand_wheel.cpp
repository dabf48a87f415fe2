// A wheel beside the keys.

#include "editor/view/hand_wheel.h"

#include <algorithm>

namespace tarquil {

namespace {

constexpr double LABEL_HEIGHT = 16.0;
constexpr double THUMB_HEIGHT = 8.0;
constexpr double FINE = 0.1;
constexpr double NOTCH = 1.0 / 16;

} // namespace

Rect HandWheel::slot() const {
    return {area.x + 4, area.y, area.w - 8, area.h - LABEL_HEIGHT};
}

std::vector<Rect> HandWheel::moved_areas(UiHost& /*host*/) {
    return shown() == drawn ? std::vector<Rect>() : std::vector<Rect>{area};
}

void HandWheel::draw(Canvas& canvas, UiHost& /*host*/, const WidgetState& state) {
    const bool is_enabled = use.is_enabled();
    drawn = shown();
    const Rect groove = slot();
    canvas.fill(groove, state.is_hovered && is_enabled ? theme::CONTROL : theme::WELL, 4);
    canvas.frame(groove, theme::OUTLINE, 4);
    const double way = groove.h - THUMB_HEIGHT;
    const auto height_of = [&](double of) {
        return groove.y + (1.0 - of) * way + THUMB_HEIGHT / 2;
    };
    const double rest = use.is_centred ? 0.5 : 0.0;
    if (is_enabled && drawn != rest) {
        const double from = height_of(std::max(drawn, rest));
        canvas.fill({groove.x, from, groove.w, height_of(std::min(drawn, rest)) - from},
                    theme::ACCENT_DIM);
    }
    if (use.is_centred)
        canvas.line({groove.x, height_of(0.5)}, {groove.right(), height_of(0.5)},
                    theme::GRID_STRONG);
    canvas.fill({groove.x, height_of(drawn) - THUMB_HEIGHT / 2, groove.w, THUMB_HEIGHT},
                is_enabled ? theme::TEXT_MUTED : theme::OUTLINE, 2);
    canvas.text({area.x, area.bottom() - LABEL_HEIGHT, area.w, LABEL_HEIGHT}, use.label,
                {theme::SMALL, is_enabled ? theme::TEXT_MUTED : theme::TEXT_DIM, Align::CENTER});
}

bool HandWheel::press(UiHost& /*host*/, const Pointer& pointer) {
    if (pointer.button != Pointer::Button::LEFT || !use.is_enabled())
        return false;
    value = use.get();
    if (pointer.is_double)
        use.set(value = use.is_centred ? 0.5 : 0.0);
    is_dragged = true;
    last = pointer.at;
    return true;
}

void HandWheel::drag(UiHost& /*host*/, const Pointer& pointer) {
    if (!is_dragged)
        return;
    const double way = (last.y - pointer.at.y) / (slot().h - THUMB_HEIGHT);
    last = pointer.at;
    value = std::clamp(value + way * (pointer.shift ? FINE : 1.0), 0.0, 1.0);
    use.set(value);
}

void HandWheel::release(UiHost& /*host*/) {
    is_dragged = false;
    if (use.let_go)
        use.let_go();
}

void HandWheel::wheel(UiHost& /*host*/, const Pointer& pointer, double steps) {
    // One that springs back would do so at once.
    if (is_dragged || use.let_go || !use.is_enabled())
        return;
    use.set(std::clamp(use.get() + steps * NOTCH * (pointer.shift ? FINE : 1.0), 0.0, 1.0));
}

Spoken HandWheel::spoken(UiHost& /*host*/) {
    Spoken spoken = spoken_of_tooltip(use.tooltip());
    spoken.role = SpokenRole::SLIDER;
    if (const size_t end = spoken.name.find(": "); end != std::string::npos) {
        spoken.text = spoken.name.substr(end + 2);
        spoken.name.resize(end);
    }
    spoken.is_enabled = use.is_enabled();
    spoken.range = SpokenRange{use.get(), 0.0, 1.0, NOTCH};
    if (!use.let_go && use.is_enabled())
        spoken.set = [this](double part) { use.set(std::clamp(part, 0.0, 1.0)); };
    return spoken;
}

} // namespace tarquil
