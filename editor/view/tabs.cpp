// The row of tabs that chooses a page.

#include "editor/view/tabs.h"

#include <numeric>

#include "editor/kit/window_size.h"
#include "editor/view/compare_buttons.h"
#include "editor/view/header.h"

namespace tarquil {

namespace {

constexpr double TAB_HEIGHT = 28.0;

class Tab : public Widget {
  public:
    Tab(const Rect& widget_area, std::string tab_title, unsigned tab_index,
        std::function<unsigned()> get_current_page, std::function<void(unsigned)> show_page)
        : Widget(widget_area), title(std::move(tab_title)), index(tab_index),
          get_current(std::move(get_current_page)), show(std::move(show_page)) {}

    void draw(Canvas& canvas, UiHost& /*host*/, const WidgetState& state) override {
        const bool is_current = get_current() == index;
        if (is_current)
            canvas.fill({area.x, area.bottom() - 3, area.w, 3}, theme::ACCENT, 1.5);
        const bool is_bright = is_current || state.is_hovered;
        canvas.text(area, title,
                    {theme::NORMAL, is_bright ? theme::TEXT : theme::TEXT_MUTED, Align::CENTER,
                     is_current ? Weight::BOLD : Weight::NORMAL});
        if (state.is_focused)
            canvas.frame(area, theme::FOCUS, 4);
    }

    bool press(UiHost& /*host*/, const Pointer& pointer) override {
        if (pointer.button == Pointer::Button::LEFT)
            show(index);
        return false;
    }

    bool press_key(UiHost& /*host*/, const KeyEvent& key) override {
        const bool is_press =
            key.key == Key::ENTER || (key.key == Key::CHARACTER && key.text == " ");
        if (is_press)
            show(index);
        return is_press;
    }

    Spoken spoken(UiHost& /*host*/) override {
        Spoken spoken{SpokenRole::TAB, title};
        spoken.is_on = get_current() == index;
        spoken.press = [this] { show(index); };
        return spoken;
    }

  private:
    const std::string title;
    const unsigned index;
    const std::function<unsigned()> get_current;
    const std::function<void(unsigned)> show;
};

// As wide as the titles are when they are current.
std::vector<double> title_widths(const std::vector<Page>& pages) {
    std::vector<double> widths;
    widths.reserve(pages.size());
    for (const Page& page : pages)
        widths.push_back(TextRun({page.title, theme::NORMAL, Weight::BOLD}).width());
    return widths;
}

} // namespace

void add_tabs(Page& header, const std::vector<Page>& pages,
              const std::function<unsigned()>& get_current,
              const std::function<void(unsigned)>& show) {
    constexpr double COMPARE_WIDTH = 142.0;
    const std::vector<double> widths = title_widths(pages);
    const double room =
        WINDOW_WIDTH - 24 - COMPARE_WIDTH - 8 - std::accumulate(widths.begin(), widths.end(), 0.0);
    double x = 12.0;
    for (unsigned i = 0; i < pages.size(); i++) {
        const double width = widths[i] + room / double(pages.size());
        header.add<Tab>(Rect{x, HEADER_HEIGHT + 2, width - 1, TAB_HEIGHT}, pages[i].title, i,
                        get_current, show);
        x += width;
    }
    add_compare_buttons(header, {WINDOW_WIDTH - 12 - COMPARE_WIDTH, HEADER_HEIGHT + 4,
                                 COMPARE_WIDTH, TAB_HEIGHT - 4});
}

} // namespace tarquil
