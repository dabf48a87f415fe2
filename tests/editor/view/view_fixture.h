// The whole editor with a bank behind it, and a user's hands, for tests.

#pragma once

#include <gtest/gtest.h>

#include <functional>

#include "editor/pictures/picture.h"
#include "editor/view/editor_view.h"
#include "tests/editor/recording_synth.h"
#include "tests/temp_directory.h"

namespace tarquil {

class EditorViewTest : public testing::Test {
  protected:
    // The first widget that fits, with its page in front; null for none.
    Widget* find_widget(const std::function<bool(const Widget&)>& fits) {
        for (unsigned page = 0; page < view.get_pages().size(); page++) {
            for (const auto& widget : view.get_pages()[page].widgets) {
                if (fits(*widget)) {
                    view.show_page(page);
                    return widget.get();
                }
            }
        }
        return nullptr;
    }
    template <typename Kind> Kind* find_kind() {
        return dynamic_cast<Kind*>(find_widget(
            [](const Widget& widget) { return dynamic_cast<const Kind*>(&widget) != nullptr; }));
    }
    // That sets exactly these.
    Widget* find_setting(const std::vector<unsigned>& controllers) {
        return find_widget(
            [&](const Widget& widget) { return widget.controllers() == controllers; });
    }
    // The middle of the widget that sets that controller alone.
    Point find(unsigned number) {
        const Widget* const found = find_setting({number});
        if (found == nullptr)
            ADD_FAILURE() << "no widget for " << number;
        return found != nullptr ? found->get_area().center() : Point{};
    }

    PointerEvent at(Point point, int button = 1) const {
        return {point.x, point.y, button, false, false, now};
    }
    void press(Point point, int button = 1) { view.press(at(point, button)); }
    void click(Point point, int button = 1) {
        now += 1000;
        press(point, button);
        view.release(at(point, button));
    }
    void press_key(Key key) { view.key({key, "", false, false}); }
    void type(const std::string& text) {
        for (const char c : text)
            view.key({Key::CHARACTER, std::string(1, c), false, false});
        press_key(Key::ENTER);
    }
    int value(unsigned number) { return view.get_model().value(number); }
    void draw() { view.draw(picture.context()); }

    TempDirectory directory;
    RecordingSynth synth;
    EditorModel model{synth};
    EditorSettings settings;
    EditorView view{model, settings, true};
    uint32_t now = 0; // ms
    Picture picture{int(WINDOW_WIDTH), int(FULL_HEIGHT)};
};

} // namespace tarquil
