// How pages are put together.

#include "editor/pages/layout.h"

#include <algorithm>

#include "editor/widgets/choice_box.h"
#include "editor/widgets/knob.h"
#include "editor/widgets/note_chooser.h"
#include "softsynth/parameters/controller_table.h"

namespace tarquil {

Rect add_panel(Page& page, const Rect& area, const std::string& title) {
    page.panels.push_back({area, title});
    Rect inside = area.inset(12, 10);
    if (!title.empty())
        inside.cut_top(TITLE_HEIGHT - 6);
    return inside;
}

void add_control(Page& page, const Rect& area, const ControlSpec& control) {
    const ControllerInfo& info = *find_controller(control.number);
    const size_t num_choices = info.choices.labels.size();
    const auto slice = [&](double width, double height) {
        const double w = std::min(area.w, width);
        const double h = std::min(area.h, height);
        return Rect{area.center().x - w / 2, area.center().y - h / 2, w, h};
    };
    if (num_choices == 2)
        page.add<SwitchBox>(slice(130, 26), control.number, control.label);
    else if (num_choices > 2)
        page.add<ChoiceBox>(slice(150, 46), control.number, control.label);
    else
        page.add<Knob>(slice(std::max(KNOB_WIDTH, std::min(area.w, 96.0)), KNOB_HEIGHT),
                       control.number, control.label);
}

void add_row(Page& page, const Rect& row, std::initializer_list<ControlSpec> controls) {
    unsigned index = 0;
    for (const ControlSpec& control : controls)
        add_control(page, column_of(row, index++, unsigned(controls.size()), 2), control);
}

Rect column_of(const Rect& area, unsigned index, unsigned count, double gap) {
    const double width = (area.w - gap * (count - 1)) / count;
    return {area.x + index * (width + gap), area.y, width, area.h};
}

Rect row_of(const Rect& area, unsigned index, unsigned count, double gap) {
    const double height = (area.h - gap * (count - 1)) / count;
    return {area.x, area.y + index * (height + gap), area.w, height};
}

void add_note_chooser(Page& page, const Rect& area) {
    page.add<NoteChooser>(area);
}

} // namespace tarquil
