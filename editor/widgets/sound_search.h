// The field that searches the browser of sounds while it is typed in.

#pragma once

#include <memory>

#include "editor/kit/widget.h"
#include "editor/model/sound_browser.h"

namespace tarquil {

class SoundSearch : public Widget {
  public:
    SoundSearch(const Rect& widget_area, std::shared_ptr<SoundBrowser> searched)
        : Widget(widget_area), browser(std::move(searched)) {}

    void draw(Canvas& canvas, UiHost& host, const WidgetState& state) override;
    bool press(UiHost& host, const Pointer& pointer) override;
    bool press_key(UiHost& host, const KeyEvent& key) override;
    std::string tooltip(UiHost& /*host*/) override {
        return "Type words of names, categories, tags or authors\nArrows choose, Enter loads";
    }
    Spoken spoken(UiHost& host) override;

  private:
    void open(UiHost& host);

    const std::shared_ptr<SoundBrowser> browser;
};

} // namespace tarquil
