// A wheel beside the keys: pitch bend or modulation.

#pragma once

#include <functional>

#include "editor/kit/widget.h"

namespace tarquil {

class HandWheel : public Widget {
  public:
    struct Use {
        std::string label;
        bool is_centred = false; // rests in the middle
        std::function<bool()> is_enabled;
        std::function<double()> get; // 0..1
        std::function<void(double)> set;
        std::function<void()> let_go;
        std::function<std::string()> tooltip;
    };

    HandWheel(const Rect& widget_area, Use wheel_use)
        : Widget(widget_area), use(std::move(wheel_use)) {}

    void draw(Canvas& canvas, UiHost& host, const WidgetState& state) override;
    bool press(UiHost& host, const Pointer& pointer) override;
    void drag(UiHost& host, const Pointer& pointer) override;
    void release(UiHost& host) override;
    void wheel(UiHost& host, const Pointer& pointer, double steps) override;
    std::string tooltip(UiHost& /*host*/) override { return use.tooltip(); }
    Spoken spoken(UiHost& host) override;
    [[nodiscard]] bool takes_focus() const override { return false; }
    [[nodiscard]] bool shows_meters() const override { return true; }
    std::vector<Rect> moved_areas(UiHost& host) override;

  private:
    [[nodiscard]] Rect slot() const;
    [[nodiscard]] double shown() const { return is_dragged ? value : use.get(); }

    const Use use;
    double value = 0; // while it is dragged
    bool is_dragged = false;
    double drawn = 0;
    Point last;
};

} // namespace tarquil
