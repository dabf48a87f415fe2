// A text of the bank that a click opens for typing.

#pragma once

#include <functional>

#include "editor/kit/widget.h"

namespace tarquil {

class TextField : public Widget {
  public:
    // `field_name` is for those who do not see where it stands.
    TextField(const Rect& widget_area, std::string field_name, std::string when_empty,
              std::function<std::string(EditorModel&)> text_now,
              std::function<void(EditorModel&, const std::string&)> on_typed)
        : Widget(widget_area), name(std::move(field_name)), placeholder(std::move(when_empty)),
          read(std::move(text_now)), write(std::move(on_typed)) {}

    void draw(Canvas& canvas, UiHost& host, const WidgetState& state) override;
    bool press(UiHost& host, const Pointer& pointer) override;
    bool press_key(UiHost& host, const KeyEvent& key) override;
    std::string tooltip(UiHost& /*host*/) override { return "Click to type"; }
    Spoken spoken(UiHost& host) override;

  private:
    void open(UiHost& host);

    const std::string name;
    const std::string placeholder;
    const std::function<std::string(EditorModel&)> read;
    const std::function<void(EditorModel&, const std::string&)> write;
};

} // namespace tarquil
