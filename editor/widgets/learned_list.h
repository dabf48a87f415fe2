// What MIDI controllers have been taught, with their ranges, to be changed.

#pragma once

#include <optional>
#include <vector>

#include "editor/kit/overlay.h"
#include "editor/kit/ui_host.h"

namespace tarquil {

// A row for each: a click on either end of its range types another one, buttons turn it round and
// take it away.  Arrows and Enter do the same.
class LearnedList : public Overlay {
  public:
    explicit LearnedList(UiHost& its_host) : host(its_host) {}

    void draw(Canvas& canvas) override;
    void press(const Pointer& pointer) override;
    void move(const Pointer& pointer) override;
    void wheel(const Pointer& pointer, double steps) override;
    void press_key(const KeyEvent& key) override;
    Spoken spoken() override;

    // What a row has, from left to right; for tests their places, of the shown rows.
    enum Cell { AT_BOTTOM, AT_TOP, REVERSE, REMOVE };
    [[nodiscard]] static Rect cell_area(unsigned shown_row, Cell cell);

  private:
    struct Place {
        unsigned row = 0;
        Cell cell = AT_BOTTOM;
        bool operator==(const Place&) const = default;
    };

    // The MIDI controllers that have been taught something.
    [[nodiscard]] std::vector<unsigned> rows() const;
    [[nodiscard]] std::optional<Place> place_at(Point point) const;
    [[nodiscard]] std::string cell_text(unsigned midi_controller, Cell cell) const;
    void draw_row(Canvas& canvas, unsigned row, unsigned midi_controller) const;
    void act(const Place& place);
    void type_end(const Place& place, unsigned midi_controller);
    void change(unsigned midi_controller, const std::optional<LearnedControl>& control) const;
    void keep_in_sight();

    UiHost& host;
    Place current;
    unsigned first = 0; // row that is shown
};

} // namespace tarquil
