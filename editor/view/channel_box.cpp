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
    const bool is_drums = model.is_drum_channel(channel);
    const bool is_selected = channel == model.channel();
    const bool is_edited = model.plays_edited(channel);
    canvas.fill(area, state.is_hovered || is_selected ? theme::HOVER : theme::PANEL, 4);
    if (is_selected)
        canvas.frame(area, model.is_heard() ? theme::ACCENT : theme::WARM, 4, 1.5);
    if (const auto& carried = host.get_view_state().carried; carried && carried->channel == channel)
        canvas.frame(area, is_drums ? theme::RED : theme::FOCUS, 4, 2);
    if (is_edited)
        canvas.fill({area.x, area.bottom() - 2.5, area.w, 2.5},
                    is_selected ? theme::ACCENT : theme::ACCENT_DIM, 1);
    const Rect lamp = light_area();
    canvas.disc(lamp.center(), lamp.w / 2, theme::GRID_STRONG);
    drawn_light = *light;
    if (*light > 0.0)
        canvas.fill(lamp, theme::GREEN, lamp.w / 2, *light);
    canvas.text({area.x + 16, area.y + 2, 18, 16}, std::to_string(channel + 1),
                {theme::SMALL, theme::TEXT, Align::LEFT, Weight::BOLD});
    canvas.text({area.x + 32, area.y + 2, area.w - 37, 16}, std::to_string(program),
                {theme::SMALL, theme::TEXT_MUTED, Align::RIGHT});
    canvas.text({area.x + 5, area.y + 16, area.w - 8, 15},
                is_drums ? "Drum kit" : short_name(model.get_state().names[program], program),
                {theme::SMALL, is_edited ? theme::TEXT : theme::TEXT_MUTED});
    if (state.is_focused)
        canvas.frame(area, theme::FOCUS, 4);
}

void ChannelBox::open(UiHost& host) {
    const EditorModel& model = host.get_model();
    const unsigned current = model.get_state().channel_programs[channel];
    const auto assign = [&host, this](unsigned program) {
        host.get_model().assign_channel(channel, program);
    };
    if (!model.is_drum_channel(channel)) {
        host.open_overlay(make_program_menu(model, area, current, assign));
        return;
    }
    std::vector<MenuItem> items;
    for (const unsigned kit : host.get_model().get_synth().drum_kits())
        items.push_back(
            {"Kit " + std::to_string(kit), kit == current, true, [assign, kit] { assign(kit); }});
    if (!items.empty())
        host.open_overlay(std::make_unique<Menu>(area, std::move(items)));
}

void ChannelBox::choose(UiHost& host) {
    EditorModel& model = host.get_model();
    if (model.is_drum_channel(channel) || (model.channel() == channel && model.is_heard()))
        open(host);
    else
        model.select_channel(channel);
}

bool ChannelBox::press(UiHost& host, const Pointer& pointer) {
    if (pointer.button == Pointer::Button::RIGHT)
        open(host);
    else if (pointer.button == Pointer::Button::LEFT)
        choose(host);
    return false;
}

bool ChannelBox::press_key(UiHost& host, const KeyEvent& key) {
    if (key.key != Key::ENTER)
        return false;
    choose(host);
    return true;
}

std::string ChannelBox::tooltip(UiHost& host) {
    const EditorModel& model = host.get_model();
    const unsigned program = model.get_state().channel_programs[channel];
    const std::string who = "Channel " + std::to_string(channel + 1) + " plays ";
    if (model.is_drum_channel(channel))
        return who + "drum kit " + std::to_string(program) +
               ", one sound for each key\nClick for another kit; kits are no programs, and not "
               "edited here";
    return who + numbered_name(model, program) +
           "\nClick to edit what it plays, again or with the right button for another program";
}

Spoken ChannelBox::spoken(UiHost& host) {
    Spoken spoken = spoken_of_tooltip(tooltip(host));
    spoken.role = SpokenRole::SWITCH;
    spoken.is_on = channel == host.get_model().channel();
    spoken.press = [this, &host] { choose(host); };
    return spoken;
}

} // namespace tarquil
