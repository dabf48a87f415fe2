// The rows of the browser of sounds: a click marks one, a double click loads it, its star makes it
// a favourite, and a row can be dragged onto a channel.  The marked sound is heard.

#pragma once

#include <memory>

#include "editor/kit/widget.h"
#include "editor/model/sound_browser.h"

namespace tarquil {

class SoundList : public Widget {
  public:
    SoundList(const Rect& widget_area, std::shared_ptr<SoundBrowser> shown)
        : Widget(widget_area), browser(std::move(shown)) {}

    void draw(Canvas& canvas, UiHost& host, const WidgetState& state) override;
    bool press(UiHost& host, const Pointer& pointer) override;
    void drag(UiHost& host, const Pointer& pointer) override;
    void release(UiHost& host) override;
    void wheel(UiHost& host, const Pointer& pointer, double steps) override;
    void hover(UiHost& host, Point at) override;
    bool press_key(UiHost& host, const KeyEvent& key) override;
    void hide(UiHost& host) override;
    std::string tooltip(UiHost& host) override;
    Spoken spoken(UiHost& host) override; // of the rows on the screen

    // Of a row on the screen, 0 for the first.
    [[nodiscard]] Point row_center(size_t shown_row) const;

  private:
    void draw_row(Canvas& canvas, size_t index, const Rect& row, bool is_hovered) const;
    void show_marked();
    void scroll_to(double top);
    void load(UiHost& host);
    void give_to_channel(UiHost& host, size_t index, unsigned channel);
    [[nodiscard]] size_t rows_shown() const;
    [[nodiscard]] Rect rows_area() const;
    [[nodiscard]] Rect bar_area() const;
    [[nodiscard]] size_t row_at(Point at) const; // num_rows for none

    const std::shared_ptr<SoundBrowser> browser;
    size_t first = 0; // shown at the top
    size_t shown_mark = 0;
    bool is_scrolling = false;
    std::optional<size_t> held_row; // that may be dragged
    Point held_at;
    Point pointer_at;
};

// What arrows, Enter and Escape do to the browser; false for another key.
bool walk_sounds(SoundBrowser& browser, UiHost& host, const KeyEvent& key);

} // namespace tarquil
