// What MIDI controllers have been taught, with their ranges, to be changed.

#include "editor/widgets/learned_list.h"

#include <algorithm>

#include "editor/kit/window_size.h"
#include "editor/widgets/text_entry.h"
#include "softsynth/parameters/control_help.h"
#include "softsynth/parameters/control_text.h"

namespace tarquil {

namespace {

constexpr unsigned LIST_SHOWN_ROWS = 12;
constexpr double LIST_ROW_HEIGHT = 28.0;
constexpr double LIST_MARGIN = 16.0;
constexpr double LIST_WIDTH = 680.0;
constexpr double LIST_HEADING_HEIGHT = 30.0;
constexpr double LIST_COLUMNS_HEIGHT = 20.0;
constexpr double LIST_HEIGHT = 2 * LIST_MARGIN + LIST_HEADING_HEIGHT + LIST_COLUMNS_HEIGHT +
                               LIST_SHOWN_ROWS * LIST_ROW_HEIGHT + 44.0;
constexpr Rect LIST_AREA{(WINDOW_WIDTH - LIST_WIDTH) / 2, (WINDOW_HEIGHT - LIST_HEIGHT) / 2,
                         LIST_WIDTH, LIST_HEIGHT};
constexpr Rect LIST_ROWS{LIST_AREA.x + LIST_MARGIN,
                         LIST_AREA.y + LIST_MARGIN + LIST_HEADING_HEIGHT + LIST_COLUMNS_HEIGHT,
                         LIST_WIDTH - 2 * LIST_MARGIN, LIST_SHOWN_ROWS* LIST_ROW_HEIGHT};
constexpr Rect LIST_CLOSE{LIST_AREA.x + LIST_AREA.w - LIST_MARGIN - 100,
                          LIST_AREA.y + LIST_AREA.h - LIST_MARGIN - 28, 100, 28};

constexpr double LIST_NUMBER_WIDTH = 96.0;
constexpr double LIST_CELL_WIDTHS[] = {92.0, 92.0, 78.0, 78.0};
constexpr const char* LIST_HEADINGS[] = {"From", "To", "", ""};

} // namespace

Rect LearnedList::cell_area(unsigned shown_row, Cell cell) {
    double x = LIST_ROWS.right();
    for (int i = REMOVE; i >= int(cell); i--)
        x -= LIST_CELL_WIDTHS[i];
    return {x + 3, LIST_ROWS.y + shown_row * LIST_ROW_HEIGHT + 2, LIST_CELL_WIDTHS[cell] - 6,
            LIST_ROW_HEIGHT - 4};
}

std::vector<unsigned> LearnedList::rows() const {
    std::vector<unsigned> found;
    for (unsigned i = 0; i < NUM_MIDI_CONTROLLERS; i++) {
        if (host.get_model().get_state().learned.get(i))
            found.push_back(i);
    }
    return found;
}

std::optional<LearnedList::Place> LearnedList::place_at(Point point) const {
    const auto count = unsigned(rows().size());
    for (unsigned row = first; row < std::min(count, first + LIST_SHOWN_ROWS); row++) {
        for (const Cell cell : {AT_BOTTOM, AT_TOP, REVERSE, REMOVE}) {
            if (cell_area(row - first, cell).contains(point))
                return Place{row, cell};
        }
    }
    return std::nullopt;
}

std::string LearnedList::cell_text(unsigned midi_controller, Cell cell) const {
    const EditorState& state = host.get_model().get_state();
    const LearnedControl& learned = *state.learned.get(midi_controller);
    if (cell == REVERSE || cell == REMOVE)
        return cell == REVERSE ? "Reverse" : "Remove";
    const uint8_t byte = cell == AT_BOTTOM ? learned.first : learned.last;
    return control_text(learned.target, byte, state.bytes, state.tempo_sync);
}

void LearnedList::draw_row(Canvas& canvas, unsigned row, unsigned midi_controller) const {
    const EditorState& state = host.get_model().get_state();
    const LearnedControl& learned = *state.learned.get(midi_controller);
    const double y = LIST_ROWS.y + (row - first) * LIST_ROW_HEIGHT;
    canvas.text({LIST_ROWS.x, y, LIST_NUMBER_WIDTH, LIST_ROW_HEIGHT},
                "Controller " + std::to_string(midi_controller),
                {theme::NORMAL, theme::TEXT_MUTED});
    const double name_x = LIST_ROWS.x + LIST_NUMBER_WIDTH;
    canvas.text({name_x, y, cell_area(0, AT_BOTTOM).x - name_x - 8, LIST_ROW_HEIGHT},
                find_controller(learned.target)->name, {});
    for (const Cell cell : {AT_BOTTOM, AT_TOP, REVERSE, REMOVE}) {
        const Rect place = cell_area(row - first, cell);
        const bool is_current = current == Place{row, cell};
        canvas.fill(place, cell < REVERSE ? theme::WELL : theme::CONTROL, 4);
        canvas.frame(place, is_current ? theme::FOCUS : theme::OUTLINE, 4, is_current ? 2 : 1);
        canvas.text(place.inset(4, 0), cell_text(midi_controller, cell),
                    {theme::SMALL, theme::TEXT, Align::CENTER});
    }
}

void LearnedList::draw(Canvas& canvas) {
    canvas.fill({0, 0, WINDOW_WIDTH, FULL_HEIGHT}, theme::BACKGROUND, 0, 0.6);
    canvas.fill(LIST_AREA, theme::PANEL, 6);
    canvas.frame(LIST_AREA, theme::OUTLINE, 6);
    Rect rest = LIST_AREA.inset(LIST_MARGIN);
    canvas.text(rest.cut_top(LIST_HEADING_HEIGHT), "MIDI controllers of this bank",
                {theme::NORMAL, theme::TEXT, Align::LEFT, Weight::BOLD});
    const TextStyle muted{theme::SMALL, theme::TEXT_MUTED};
    const std::vector<unsigned> all = rows();
    if (all.empty())
        canvas.text({LIST_ROWS.x, LIST_ROWS.y, LIST_ROWS.w, LIST_ROW_HEIGHT},
                    "None yet: right click a control, choose \"Learn a MIDI controller\" and move "
                    "one",
                    muted);
    for (const Cell cell : {AT_BOTTOM, AT_TOP}) {
        if (!all.empty())
            canvas.text(
                {cell_area(0, cell).x, LIST_ROWS.y - LIST_COLUMNS_HEIGHT, 92, LIST_COLUMNS_HEIGHT},
                LIST_HEADINGS[cell], muted);
    }
    for (unsigned row = first; row < std::min(unsigned(all.size()), first + LIST_SHOWN_ROWS); row++)
        draw_row(canvas, row, all[row]);
    canvas.text({LIST_ROWS.x, LIST_CLOSE.y, LIST_CLOSE.x - LIST_ROWS.x - 8, LIST_CLOSE.h},
                "They move the edited program on any channel, and nothing else", muted);
    canvas.fill(LIST_CLOSE, theme::ACCENT_DIM, 4);
    canvas.text(LIST_CLOSE, "Close", {theme::NORMAL, theme::TEXT, Align::CENTER});
}

void LearnedList::change(unsigned midi_controller,
                         const std::optional<LearnedControl>& control) const {
    EditorModel& model = host.get_model();
    LearnedControls learned = model.get_state().learned;
    learned.set(midi_controller, control);
    model.set_learned(control ? "MIDI controller's range" : "Forget MIDI controller", learned);
}

void LearnedList::type_end(const Place& place, unsigned midi_controller) {
    const EditorState& state = host.get_model().get_state();
    const LearnedControl learned = *state.learned.get(midi_controller);
    const bool is_bottom = place.cell == AT_BOTTOM;
    const uint8_t byte = is_bottom ? learned.first : learned.last;
    host.open_overlay(std::make_unique<TextEntry>(
        cell_area(place.row - first, place.cell), LIST_HEADINGS[place.cell],
        control_text(learned.target, byte, state.bytes, state.tempo_sync),
        [this, midi_controller, learned, is_bottom](const std::string& text) {
            const EditorState& now = host.get_model().get_state();
            const std::optional<int> typed =
                parse_control(learned.target, text, now.bytes, now.tempo_sync);
            if (!typed) {
                host.show_message("\"" + text + "\" is no value here: " +
                                  control_range(learned.target, now.bytes) + " would do");
                return false;
            }
            LearnedControl changed = learned;
            (is_bottom ? changed.first : changed.last) = uint8_t(*typed);
            change(midi_controller, changed);
            return true;
        }));
}

void LearnedList::act(const Place& place) {
    const std::vector<unsigned> all = rows();
    if (place.row >= all.size())
        return;
    current = place;
    const unsigned midi_controller = all[place.row];
    LearnedControl learned = *host.get_model().get_state().learned.get(midi_controller);
    if (place.cell == REMOVE) {
        change(midi_controller, std::nullopt);
        keep_in_sight();
    } else if (place.cell == REVERSE) {
        std::swap(learned.first, learned.last);
        change(midi_controller, learned);
    } else {
        type_end(place, midi_controller);
    }
}

// The current row is one that is there, and is shown.
void LearnedList::keep_in_sight() {
    const auto count = unsigned(rows().size());
    current.row = count == 0 ? 0 : std::min(current.row, count - 1);
    first = std::min(first, current.row);
    if (current.row >= first + LIST_SHOWN_ROWS)
        first = current.row - LIST_SHOWN_ROWS + 1;
}

void LearnedList::press(const Pointer& pointer) {
    if (const auto place = place_at(pointer.at))
        act(*place);
    else if (LIST_CLOSE.contains(pointer.at) || !LIST_AREA.contains(pointer.at))
        finish();
}

void LearnedList::move(const Pointer& pointer) {
    if (const auto place = place_at(pointer.at))
        current = *place;
}

void LearnedList::wheel(const Pointer& /*pointer*/, double steps) {
    const auto count = unsigned(rows().size());
    const unsigned last = count > LIST_SHOWN_ROWS ? count - LIST_SHOWN_ROWS : 0;
    if (steps > 0.0)
        first -= first > 0 ? 1 : 0;
    else
        first = std::min(first + 1, last);
}

void LearnedList::press_key(const KeyEvent& key) {
    switch (key.key) {
    case Key::ESCAPE:
        finish();
        return;
    case Key::ENTER:
        act(current);
        return;
    case Key::DEL:
        act({current.row, REMOVE});
        return;
    case Key::UP:
        current.row -= current.row > 0 ? 1 : 0;
        break;
    case Key::DOWN:
        current.row++;
        break;
    case Key::LEFT:
        current.cell = Cell(std::max(int(current.cell) - 1, int(AT_BOTTOM)));
        break;
    case Key::RIGHT:
        current.cell = Cell(std::min(int(current.cell) + 1, int(REMOVE)));
        break;
    default:
        return;
    }
    keep_in_sight();
}

Spoken LearnedList::spoken() {
    Spoken dialog{SpokenRole::DIALOG, "MIDI controllers of this bank"};
    dialog.area = LIST_AREA;
    const std::vector<unsigned> all = rows();
    dialog.is_focused = all.empty();
    for (unsigned row = first; row < std::min(unsigned(all.size()), first + LIST_SHOWN_ROWS);
         row++) {
        const LearnedControl& learned = *host.get_model().get_state().learned.get(all[row]);
        const std::string who = "Controller " + std::to_string(all[row]) + ", " +
                                find_controller(learned.target)->name + ": ";
        for (const Cell cell : {AT_BOTTOM, AT_TOP, REVERSE, REMOVE}) {
            std::string name = who;
            if (cell < REVERSE) {
                name += LIST_HEADINGS[cell];
                name += ' ';
            }
            name += cell_text(all[row], cell);
            Spoken button{SpokenRole::BUTTON, std::move(name)};
            button.area = cell_area(row - first, cell);
            button.is_focused = current == Place{row, cell};
            button.press = [this, row, cell] { act({row, cell}); };
            dialog.items.push_back(std::move(button));
        }
    }
    Spoken close{SpokenRole::BUTTON, "Close"};
    close.area = LIST_CLOSE;
    close.press = [this] { finish(); };
    dialog.items.push_back(std::move(close));
    return dialog;
}

} // namespace tarquil
