// A text field over the page, for one value or name.

#pragma once

#include <functional>
#include <string>

#include "editor/kit/overlay.h"
#include "editor/kit/text_edit.h"

namespace tarquil {

class TextEntry : public Overlay {
  public:
    // `take` gets the text at Enter or a click elsewhere; false: it means nothing, and the field
    // stays.
    TextEntry(const Rect& field, std::string field_name, std::string start,
              std::function<bool(const std::string& text)> take_text);

    void draw(Canvas& canvas) override;
    void press(const Pointer& pointer) override;
    void press_key(const KeyEvent& key) override;
    Spoken spoken() override;
    [[nodiscard]] bool takes_text() const override { return true; }

  private:
    const Rect area;
    const std::string name;
    const std::string before;
    TextEdit edit;
    const std::function<bool(const std::string& text)> take;
    bool is_refused = false;
};

} // namespace tarquil
