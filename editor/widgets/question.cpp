// A question before something that can not be undone.

#include "editor/widgets/question.h"

#include "editor/kit/window_size.h"

namespace tarquil {

namespace {

constexpr Rect AREA{(WINDOW_WIDTH - 460) / 2, (WINDOW_HEIGHT - 120) / 2, 460, 120};
constexpr Rect YES{AREA.x + AREA.w - 220, AREA.y + 80, 100, 26};
constexpr Rect NO{AREA.x + AREA.w - 112, AREA.y + 80, 100, 26};

void draw_button(Canvas& canvas, const Rect& area, const std::string& text, bool is_main) {
    canvas.fill(area, is_main ? theme::ACCENT_DIM : theme::HOVER, 4);
    canvas.text(area, text, {theme::NORMAL, theme::TEXT, Align::CENTER});
}

} // namespace

Question::Question(std::string question_text, std::string action_name, std::function<void()> on_yes)
    : text(std::move(question_text)), action(std::move(action_name)), yes(std::move(on_yes)) {}

void Question::draw(Canvas& canvas) {
    canvas.fill({0, 0, WINDOW_WIDTH, WINDOW_HEIGHT}, theme::BACKGROUND, 0, 0.6);
    canvas.fill(AREA, theme::CONTROL, 6);
    canvas.frame(AREA, theme::OUTLINE, 6);
    canvas.text({AREA.x + 16, AREA.y + 16, AREA.w - 32, 40}, text, {12.5});
    draw_button(canvas, YES, action, true);
    draw_button(canvas, NO, "Cancel", false);
}

void Question::press(const Pointer& pointer) {
    const bool is_yes = YES.contains(pointer.at);
    if (is_yes || NO.contains(pointer.at) || !AREA.contains(pointer.at))
        finish();
    if (is_yes)
        yes();
}

void Question::press_key(const KeyEvent& key) {
    if (key.key == Key::ENTER || key.key == Key::ESCAPE)
        finish();
    if (key.key == Key::ENTER)
        yes();
}

} // namespace tarquil
