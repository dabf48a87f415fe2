// A question before something that can not be undone, or that has several good answers.

#include "editor/widgets/question.h"

#include "editor/kit/window_size.h"

namespace tarquil {

namespace {

constexpr double WIDTH = 520.0;
constexpr double HEIGHT = 132.0;
constexpr Rect QUESTION_AREA{(WINDOW_WIDTH - WIDTH) / 2, (WINDOW_HEIGHT - HEIGHT) / 2, WIDTH,
                             HEIGHT};
constexpr double QUESTION_MARGIN = 16.0;
constexpr double LINE_HEIGHT = 20.0;
constexpr double BUTTON_WIDTH = 132.0;
constexpr double BUTTON_HEIGHT = 28.0;
constexpr double SPACE = 8.0;

std::vector<std::string> lines_of(const std::string& text) {
    std::vector<std::string> lines;
    size_t start = 0;
    for (size_t end = text.find('\n'); end != std::string::npos; end = text.find('\n', start)) {
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    lines.push_back(text.substr(start));
    return lines;
}

} // namespace

Question::Question(const std::string& question_text, std::vector<Answer> given)
    : lines(lines_of(question_text)), answers(std::move(given)) {}

Rect Question::area_of(size_t answer) const {
    const double from_right = double(answers.size() - answer);
    return {QUESTION_AREA.right() - QUESTION_MARGIN + SPACE - from_right * (BUTTON_WIDTH + SPACE),
            QUESTION_AREA.bottom() - QUESTION_MARGIN - BUTTON_HEIGHT, BUTTON_WIDTH, BUTTON_HEIGHT};
}

size_t Question::answer_at(Point point) const {
    size_t answer = 0;
    while (answer < answers.size() && !area_of(answer).contains(point))
        answer++;
    return answer;
}

void Question::draw(Canvas& canvas) {
    canvas.fill({0, 0, WINDOW_WIDTH, FULL_HEIGHT}, theme::BACKGROUND, 0, 0.6);
    canvas.fill(QUESTION_AREA, theme::PANEL, 6);
    canvas.frame(QUESTION_AREA, theme::OUTLINE, 6);
    Rect rest = QUESTION_AREA.inset(QUESTION_MARGIN);
    for (const std::string& line : lines)
        canvas.text(rest.cut_top(LINE_HEIGHT), line, {12.5});
    for (size_t i = 0; i < answers.size(); i++) {
        canvas.fill(area_of(i), i == 0 ? theme::ACCENT_DIM : theme::CONTROL, 4);
        canvas.text(area_of(i), answers[i].name, {theme::NORMAL, theme::TEXT, Align::CENTER});
        canvas.frame(area_of(i), i == current ? theme::FOCUS : theme::OUTLINE, 4,
                     i == current ? 2 : 1);
    }
}

void Question::choose(size_t answer) {
    finish();
    if (answers[answer].act)
        answers[answer].act();
}

void Question::press(const Pointer& pointer) {
    const size_t answer = answer_at(pointer.at);
    if (answer < answers.size())
        choose(answer);
    else if (!QUESTION_AREA.contains(pointer.at))
        choose(answers.size() - 1);
}

void Question::move(const Pointer& pointer) {
    const size_t answer = answer_at(pointer.at);
    if (answer < answers.size())
        current = answer;
}

void Question::press_key(const KeyEvent& key) {
    const size_t last = answers.size() - 1;
    const bool is_back = key.key == Key::LEFT || (key.key == Key::TAB && key.shift);
    if (key.key == Key::ENTER)
        choose(current);
    else if (key.key == Key::ESCAPE)
        choose(last);
    else if (is_back)
        current = current > 0 ? current - 1 : last;
    else if (key.key == Key::RIGHT || key.key == Key::TAB)
        current = current < last ? current + 1 : 0;
}

Spoken Question::spoken() {
    Spoken dialog{SpokenRole::DIALOG, ""};
    for (const std::string& line : lines)
        dialog.name += (dialog.name.empty() ? "" : " ") + line;
    dialog.area = QUESTION_AREA;
    for (size_t i = 0; i < answers.size(); i++) {
        Spoken answer{SpokenRole::BUTTON, answers[i].name};
        answer.area = area_of(i);
        answer.is_focused = i == current;
        answer.press = [this, i] { choose(i); };
        dialog.items.push_back(std::move(answer));
    }
    return dialog;
}

} // namespace tarquil
