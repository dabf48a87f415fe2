// The program's name at the top left, which opens the menu of files and looks.

#pragma once

#include "editor/kit/widget.h"

namespace tarquil {

class MainMenu : public Widget {
  public:
    using Widget::Widget;

    void draw(Canvas& canvas, UiHost& host, const WidgetState& state) override;
    bool press(UiHost& host, const Pointer& pointer) override;
    bool press_key(UiHost& host, const KeyEvent& key) override;
    std::string tooltip(UiHost& host) override;
    Spoken spoken(UiHost& host) override;

  private:
    void open(UiHost& host);
};

} // namespace tarquil
