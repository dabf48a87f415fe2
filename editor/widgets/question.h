// A question before something that can not be undone.

#pragma once

#include <functional>
#include <string>

#include "editor/kit/overlay.h"

namespace tarquil {

class Question : public Overlay {
  public:
    // `action` is the name of what happens at Enter: "Replace".
    Question(std::string question_text, std::string action_name, std::function<void()> on_yes);

    void draw(Canvas& canvas) override;
    void press(const Pointer& pointer) override;
    void press_key(const KeyEvent& key) override;

  private:
    const std::string text;
    const std::string action;
    const std::function<void()> yes;
};

} // namespace tarquil
