// A and B: two versions of the edited program to listen to in turn.

#include "editor/view/compare_buttons.h"

#include "editor/view/morph_strip.h"
#include "editor/widgets/button.h"

namespace tarquil {

void add_compare_buttons(Page& header, const Rect& area) {
    constexpr double SPACE = 3.0;
    constexpr double A_WIDTH = 32.0;
    constexpr double MORPH_WIDTH = 56.0;
    Rect row = area;
    header.add<Button>(row.cut_right(MORPH_WIDTH), "Morph", open_morph,
                       "The way from version A to version B, by hand or over time");
    row.cut_right(SPACE);
    header.add<Button>(
        row.cut_left(A_WIDTH),
        [](UiHost& host) {
            const bool is_b = host.get_model().is_version_b();
            return Button::Look{is_b ? "B" : "A", true, is_b};
        },
        [](UiHost& host) { host.get_model().compare(); },
        "Version A or B of the program: a click changes to the other\nB starts as a copy of A");
    row.cut_left(SPACE);
    header.add<Button>(
        row,
        [](UiHost& host) {
            return Button::Look{host.get_model().is_version_b() ? "B \u2192 A" : "A \u2192 B"};
        },
        [](UiHost& host) {
            EditorModel& model = host.get_model();
            const bool is_b = model.is_version_b();
            model.copy_to_other_version();
            host.show_message(is_b ? "A is as B now" : "B is as A now");
        },
        "Makes the other version a copy of this one");
}

} // namespace tarquil
