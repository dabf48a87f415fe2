// A button with an action of its own.

#pragma once

#include <functional>
#include <optional>
#include <string>

#include "editor/kit/widget.h"

namespace tarquil {

class Button : public Widget {
  public:
    struct Look {
        std::string text;
        bool is_enabled = true;
        std::optional<bool> is_lit{}; // of one that is a switch
        Color light = theme::ACCENT_DIM;
    };

    // `look` is asked at each drawing.
    Button(const Rect& widget_area, std::function<Look(UiHost&)> look_now,
           std::function<void(UiHost&)> on_press, std::string tip = "")
        : Widget(widget_area), look(std::move(look_now)), action(std::move(on_press)),
          help(std::move(tip)) {}
    Button(const Rect& widget_area, const std::string& text, std::function<void(UiHost&)> on_press,
           std::string tip = "")
        : Button(
              widget_area, [text](UiHost& /*host*/) { return Look{text}; }, std::move(on_press),
              std::move(tip)) {}

    void draw(Canvas& canvas, UiHost& host, const WidgetState& state) override;
    bool press(UiHost& host, const Pointer& pointer) override;
    bool press_key(UiHost& host, const KeyEvent& key) override;
    std::string tooltip(UiHost& /*host*/) override { return help; }
    Spoken spoken(UiHost& host) override;
    [[nodiscard]] std::string text(UiHost& host) const { return look(host).text; }

  private:
    const std::function<Look(UiHost&)> look;
    const std::function<void(UiHost&)> action;
    const std::string help;
};

} // namespace tarquil
