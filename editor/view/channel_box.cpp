// A channel's program.

#include "editor/view/channel_box.h"

#include "editor/widgets/program_menu.h"
#include "instrument/names.h"

namespace tarquil {

namespace {

// What nobody has named fits into a box.
std::string short_name(const std::string& name, unsigned program) {
    return name == default_instrument_name(program) ? "inst_" + std::to_string(program) : name;
}

} // namespace

Rect ChannelBox::light_area() const {
    return {area.x + 5.5, area.y + 6.5, 7, 7};
}

std::vector<Rect> ChannelBox::moved_areas(UiHost& /*host*/) {
    return *light == drawn_light ? std::vector<Rect>() : std::vector{light_area().inset(-1)};
}

void ChannelBox::draw(Canvas& canvas, UiHost& host, const WidgetState& state) {
    const EditorModel& model = host.get_model();
    const unsigned program = model.get_state().channel_programs[channel];
    const bool is_current = program == model.get_state().program;
    canvas.fill(area, state.is_hovered ? theme::HOVER : theme::PANEL, 4);
    if (is_current)
        canvas.fill({area.x, area.bottom() - 2.5, area.w, 2.5}, theme::ACCENT, 1);
    const Rect lamp = light_area();
    canvas.disc(lamp.center(), lamp.w / 2, theme::GRID_STRONG);
    drawn_light = *light;
    if (*light > 0.0)
        canvas.fill(lamp, theme::GREEN, lamp.w / 2, *light);
    canvas.text({area.x + 16, area.y + 2, 18, 16}, std::to_string(channel + 1),
                {theme::SMALL, theme::TEXT, Align::LEFT, Weight::BOLD});
    canvas.text({area.x + 32, area.y + 2, area.w - 37, 16}, std::to_string(program),
                {9.5, theme::TEXT_MUTED, Align::RIGHT});
    canvas.text({area.x + 5, area.y + 16, area.w - 8, 15},
                short_name(model.get_state().names[program], program),
                {9.5, is_current ? theme::TEXT : theme::TEXT_MUTED});
    if (state.is_focused)
        canvas.frame(area, theme::FOCUS, 4);
}

void ChannelBox::open(UiHost& host) {
    const EditorModel& model = host.get_model();
    host.open_overlay(make_program_menu(
        model, area, model.get_state().channel_programs[channel],
        [&host, this](unsigned program) { host.get_model().assign_channel(channel, program); }));
}

bool ChannelBox::press(UiHost& host, const Pointer& /*pointer*/) {
    open(host);
    return false;
}

bool ChannelBox::press_key(UiHost& host, const KeyEvent& key) {
    if (key.key != Key::ENTER)
        return false;
    open(host);
    return true;
}

std::string ChannelBox::tooltip(UiHost& host) {
    const EditorModel& model = host.get_model();
    return "Channel " + std::to_string(channel + 1) + " plays " +
           numbered_name(model, model.get_state().channel_programs[channel]) +
           "\nClick to give it another program";
}

} // namespace tarquil
