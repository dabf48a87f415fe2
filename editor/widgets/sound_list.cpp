// The rows of the browser of sounds.

#include "editor/widgets/sound_list.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include "editor/widgets/given_sound.h"

namespace tarquil {

namespace {

constexpr double ROW_HEIGHT = 24.0;
constexpr double HEAD_HEIGHT = 20.0;
constexpr double BAR_WIDTH = 24.0; // of the place that scrolls
constexpr double STAR_WIDTH = 28.0;
constexpr int PAGE = 18; // rows

struct Column {
    const char* title;
    std::string LibrarySound::*text;
    double part; // of the width behind the star
};
constexpr Column COLUMNS[] = {{"Name", &LibrarySound::name, 0.25},
                              {"Category", &LibrarySound::category, 0.13},
                              {"Tags", &LibrarySound::tags, 0.29},
                              {"Author", &LibrarySound::author, 0.12},
                              {"From", &LibrarySound::where, 0.21}};

void draw_star(Canvas& canvas, Point center, bool is_full) {
    constexpr double OUTER = 7.0;
    constexpr double INNER = 2.8;
    std::vector<Point> points;
    for (int i = 0; i <= 10; i++) {
        const double angle = std::numbers::pi * (i / 5.0 - 0.5);
        const double radius = i % 2 == 0 ? OUTER : INNER;
        points.push_back(
            {center.x + radius * std::cos(angle), center.y + radius * std::sin(angle)});
    }
    if (is_full)
        canvas.polygon(points, theme::WARM);
    else
        canvas.polyline(points, theme::OUTLINE, 1);
}

std::string why_empty(const SoundBrowser& browser) {
    if (!browser.search().empty())
        return "No sound here has all of these words";
    if (browser.filter() == SoundBrowser::Filter::FAVOURITES)
        return "The star in front of a sound makes it a favourite";
    if (browser.filter() == SoundBrowser::Filter::FILES)
        return "Instruments and banks in " + browser.user_folder() + " are listed here";
    return "No sounds";
}

} // namespace

bool walk_sounds(SoundBrowser& browser, UiHost& host, const KeyEvent& key) {
    EditorSynth& synth = host.get_model().get_synth();
    const auto step = [&](int rows) {
        browser.step(rows);
        browser.audition(synth);
        return true;
    };
    switch (key.key) {
    case Key::UP:
        return step(-1);
    case Key::DOWN:
        return step(1);
    case Key::PAGE_UP:
        return step(-PAGE);
    case Key::PAGE_DOWN:
        return step(PAGE);
    case Key::ESCAPE:
        browser.end_audition(synth);
        return true;
    case Key::ENTER:
        if (browser.marked())
            host.show_message(browser.load(*browser.marked(), host.get_model()), MessageKind::DONE);
        return true;
    default:
        return false;
    }
}

Rect SoundList::rows_area() const {
    Rect rows = area;
    rows.cut_top(HEAD_HEIGHT);
    rows.cut_right(BAR_WIDTH);
    return rows;
}

Rect SoundList::bar_area() const {
    const Rect rows = rows_area();
    return {rows.right(), rows.y, BAR_WIDTH, rows.h};
}

Point SoundList::row_center(size_t shown_row) const {
    const Rect rows = rows_area();
    return {rows.center().x, rows.y + ROW_HEIGHT * (double(shown_row) + 0.5)};
}

size_t SoundList::rows_shown() const {
    return size_t(rows_area().h / ROW_HEIGHT);
}

size_t SoundList::row_at(Point at) const {
    const Rect rows = rows_area();
    if (!rows.contains(at))
        return browser->num_rows();
    return std::min(first + size_t((at.y - rows.y) / ROW_HEIGHT), browser->num_rows());
}

// After a step of the mark, wherever it came from.
void SoundList::show_marked() {
    const size_t mark = browser->marked().value_or(0);
    if (mark != shown_mark) {
        first = std::min(first, mark);
        if (mark >= first + rows_shown())
            first = mark + 1 - rows_shown();
    }
    shown_mark = mark;
    scroll_to(double(first));
}

void SoundList::scroll_to(double top) {
    const size_t count = browser->num_rows();
    const size_t last = count > rows_shown() ? count - rows_shown() : 0;
    first = size_t(std::clamp(std::round(top), 0.0, double(last)));
}

void SoundList::draw_row(Canvas& canvas, size_t index, const Rect& row, bool is_hovered) const {
    const LibrarySound& sound = browser->row(index);
    const bool is_marked = browser->marked() == index;
    if (is_marked || is_hovered)
        canvas.fill(row, is_marked ? theme::ACCENT_DIM : theme::HOVER, 3);
    Rect rest = row;
    const Point star = rest.cut_left(STAR_WIDTH).center();
    if (!sound.id.empty())
        draw_star(canvas, star, browser->is_favourite(index));
    const double width = rest.w;
    for (const Column& column : COLUMNS)
        canvas.text(
            rest.cut_left(column.part * width).inset(4, 0), sound.*column.text,
            {theme::NORMAL, column.text == &LibrarySound::name ? theme::TEXT : theme::TEXT_MUTED});
}

void SoundList::draw(Canvas& canvas, UiHost& host, const WidgetState& state) {
    browser->follow(host.get_model());
    show_marked();
    Rect head = area;
    head = head.cut_top(HEAD_HEIGHT);
    head.cut_right(BAR_WIDTH);
    head.cut_left(STAR_WIDTH);
    const double width = head.w;
    for (const Column& column : COLUMNS)
        canvas.text(head.cut_left(column.part * width).inset(4, 0), column.title,
                    {theme::SMALL, theme::TEXT_MUTED, Align::LEFT, Weight::BOLD});
    const Rect rows = rows_area();
    canvas.fill({rows.x, rows.y, rows.w + BAR_WIDTH, rows.h}, theme::WELL, 4);
    const size_t count = browser->num_rows();
    for (size_t i = first; i < std::min(count, first + rows_shown()); i++)
        draw_row(canvas, i, {rows.x, rows.y + ROW_HEIGHT * double(i - first), rows.w, ROW_HEIGHT},
                 state.is_hovered && row_at(pointer_at) == i);
    if (count == 0)
        canvas.text(rows, why_empty(*browser), {theme::NORMAL, theme::TEXT_MUTED, Align::CENTER});
    if (count > rows_shown()) {
        const Rect bar = bar_area().inset(9, 2);
        const double unit = bar.h / double(count);
        canvas.fill({bar.x, bar.y + unit * double(first), bar.w,
                     std::max(8.0, unit * double(rows_shown()))},
                    theme::OUTLINE, 3);
    }
    if (state.is_focused)
        canvas.frame(area, theme::FOCUS, 4);
}

void SoundList::load(UiHost& host) {
    walk_sounds(*browser, host, {Key::ENTER, "", false, false});
}

bool SoundList::press(UiHost& host, const Pointer& pointer) {
    if (bar_area().contains(pointer.at)) {
        is_scrolling = true;
        drag(host, pointer);
        return true;
    }
    const size_t index = row_at(pointer.at);
    if (index >= browser->num_rows())
        return false;
    if (pointer.at.x < area.x + STAR_WIDTH && !browser->row(index).id.empty()) {
        const std::string problem = browser->toggle_favourite(index);
        if (!problem.empty())
            host.show_message(problem, MessageKind::FAILED);
        return false;
    }
    browser->mark(index);
    if (pointer.is_double) {
        load(host);
        return false;
    }
    browser->audition(host.get_model().get_synth());
    held_row = index;
    held_at = pointer.at;
    return true;
}

void SoundList::drag(UiHost& host, const Pointer& pointer) {
    constexpr double REACH = 6.0; // of a hand that does not mean to drag
    std::optional<CarriedSound>& carried = host.get_view_state().carried;
    const double way = std::hypot(pointer.at.x - held_at.x, pointer.at.y - held_at.y);
    if (held_row && (carried || way > REACH))
        carried = {browser->row(*held_row).name, pointer.at, host.channel_at(pointer.at)};
    if (!is_scrolling)
        return;
    const Rect bar = bar_area();
    const double part = (pointer.at.y - bar.y) / bar.h;
    scroll_to(part * double(browser->num_rows()) - double(rows_shown()) / 2);
}

void SoundList::release(UiHost& host) {
    const std::optional<CarriedSound> carried =
        std::exchange(host.get_view_state().carried, std::nullopt);
    if (held_row && carried && carried->channel)
        give_to_channel(host, *held_row, *carried->channel);
    held_row.reset();
    is_scrolling = false;
}

void SoundList::give_to_channel(UiHost& host, size_t index, unsigned channel) {
    const std::string problem = browser->give_to_channel(index, channel, host.get_model());
    if (problem.empty())
        tell_given_sound(host, channel);
    else
        host.show_message(problem, MessageKind::FAILED);
}

void SoundList::hide(UiHost& host) {
    browser->end_audition(host.get_model().get_synth());
}

void SoundList::wheel(UiHost& /*host*/, const Pointer& /*pointer*/, double steps) {
    constexpr double ROWS_PER_STEP = 3.0;
    scroll_to(double(first) - steps * ROWS_PER_STEP);
}

void SoundList::hover(UiHost& /*host*/, Point at) {
    pointer_at = at;
}

bool SoundList::press_key(UiHost& host, const KeyEvent& key) {
    return walk_sounds(*browser, host, key);
}

std::string SoundList::tooltip(UiHost& /*host*/) {
    const size_t index = row_at(pointer_at);
    if (index >= browser->num_rows())
        return "";
    const LibrarySound& sound = browser->row(index);
    const std::string comment(sound.instrument.get_text(InstrumentText::COMMENT));
    return sound.name + (comment.empty() ? "" : "\n" + comment) +
           "\nA double click or Enter gives it to the edited program, a drag to a channel";
}

Spoken SoundList::spoken(UiHost& host) {
    browser->follow(host.get_model());
    show_marked();
    Spoken list{SpokenRole::LIST, browser->num_rows() > 0 ? "Sounds" : why_empty(*browser)};
    const Rect rows = rows_area();
    const size_t end = std::min(browser->num_rows(), first + rows_shown());
    for (size_t i = first; i < end; i++) {
        const LibrarySound& sound = browser->row(i);
        Spoken item{SpokenRole::ITEM, sound.name};
        item.help = sound.category + (browser->is_favourite(i) ? ", favourite" : "");
        item.area = {rows.x, rows.y + ROW_HEIGHT * double(i - first), rows.w, ROW_HEIGHT};
        item.is_on = browser->marked() == i;
        item.press = [this, &host, i] {
            browser->mark(i);
            load(host);
        };
        list.items.push_back(std::move(item));
    }
    return list;
}

} // namespace tarquil
