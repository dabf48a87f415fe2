// The keys of the keyboard: played by the pointer, lit by what sounds.

#pragma once

#include <array>

#include "editor/kit/widget.h"
#include "editor/model/hands.h"
#include "editor/view/key_layout.h"

namespace tarquil {

class PianoKeys : public Widget {
  public:
    // Both stay as long as the object.
    PianoKeys(const Rect& widget_area, Hands& played_hands, KeyLayout& key_layout)
        : Widget(widget_area), hands(played_hands), layout(key_layout) {}

    void draw(Canvas& canvas, UiHost& host, const WidgetState& state) override;
    bool press(UiHost& host, const Pointer& pointer) override;
    void drag(UiHost& host, const Pointer& pointer) override;
    void release(UiHost& host) override;
    void hover(UiHost& host, Point at) override;
    void wheel(UiHost& host, const Pointer& pointer, double steps) override;
    std::string tooltip(UiHost& host) override;
    [[nodiscard]] bool takes_focus() const override { return false; }
    [[nodiscard]] bool shows_meters() const override { return true; }
    std::vector<Rect> moved_areas(UiHost& host) override;

  private:
    enum class Light : uint8_t { NONE, HERE, ELSEWHERE };
    using Lights = std::array<Light, KeyLayout::NUM_KEYS>;

    [[nodiscard]] Lights lights() const;
    void draw_key(Canvas& canvas, int key, Light light) const;
    void strike(int key, Point at);

    Hands& hands;
    KeyLayout& layout;
    std::optional<int> pressed_key;
    int hovered_key = 0;
    Lights drawn{};
};

} // namespace tarquil
