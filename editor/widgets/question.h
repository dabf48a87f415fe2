// A question before something that can not be undone, or that has several good answers.

#pragma once

#include <functional>
#include <string>
#include <vector>

#include "editor/kit/overlay.h"

namespace tarquil {

class Question : public Overlay {
  public:
    struct Answer {
        std::string name; // of what happens then: "Replace"
        std::function<void()> act;
    };

    // `given` are two or three answers: Enter is the first, Escape and a click beside it the last,
    // arrows and Tab choose among them.  An answer may open what comes next.
    Question(const std::string& question_text, std::vector<Answer> given);

    void draw(Canvas& canvas) override;
    void press(const Pointer& pointer) override;
    void move(const Pointer& pointer) override;
    void press_key(const KeyEvent& key) override;
    Spoken spoken() override;

  private:
    [[nodiscard]] Rect area_of(size_t answer) const;
    [[nodiscard]] size_t answer_at(Point point) const;
    void choose(size_t answer);

    const std::vector<std::string> lines;
    const std::vector<Answer> answers;
    size_t current = 0;
};

} // namespace tarquil
