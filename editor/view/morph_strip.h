// The way from version A of a program to version B, in the place of the tabs.

#pragma once

#include "editor/kit/overlay.h"
#include "editor/kit/ui_host.h"

namespace tarquil {

// Says so instead when the versions do not differ.
void open_morph(UiHost& host);

// A slider from A to B; the same over time, once or to and fro, in seconds or in note lengths at
// the tempo that is played; what is heard there is kept or dropped.  The keyboard can be played
// meanwhile.  Arrows move, Space plays and stops, Enter keeps, Escape drops.
class MorphStrip : public Overlay {
  public:
    explicit MorphStrip(UiHost& its_host) : host(its_host) {}

    void draw(Canvas& canvas) override;
    void press(const Pointer& pointer) override;
    void move(const Pointer& pointer) override;
    void release() override { is_held = false; }
    void wheel(const Pointer& pointer, double steps) override;
    void press_key(const KeyEvent& key) override;
    [[nodiscard]] bool leaves_keyboard() const override { return !is_held; }
    bool pass_time(double seconds) override;
    Spoken spoken() override;

    // Where its parts are.
    enum Part { SLIDER, VALUE, LENGTH, SWING, PLAY, DROP, KEEP, NUM_PARTS };
    [[nodiscard]] static Rect area_of(Part part);

  private:
    [[nodiscard]] double position() const;
    [[nodiscard]] std::string text_of(Part part) const;
    void set(double position);
    void set_by_hand(double position);
    void act(Part part);
    void choose_length();
    void type_length();
    void type_position();

    UiHost& host;
    MorphRun run;
    bool is_held = false; // the slider
    Part hovered = NUM_PARTS;
};

} // namespace tarquil
