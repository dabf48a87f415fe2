// The whole editor with a bank behind it, and a user's hands, for tests.

#pragma once

#include <gtest/gtest.h>

#include "editor/model/bank_synth.h"
#include "editor/pictures/picture.h"
#include "editor/view/editor_view.h"
#include "tests/temp_directory.h"

namespace tarquil {

class EditorViewTest : public testing::Test {
  protected:
    // The widget that sets exactly that controller, and the page with it in front.
    Point find(unsigned number) {
        for (unsigned page = 0; page < view.get_pages().size(); page++) {
            for (const auto& widget : view.get_pages()[page].widgets) {
                if (widget->controllers() == std::vector<unsigned>{number}) {
                    view.show_page(page);
                    return widget->get_area().center();
                }
            }
        }
        ADD_FAILURE() << "no widget for " << number;
        return {};
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
    BankSynth synth;
    EditorModel model{synth};
    EditorSettings settings;
    EditorView view{model, settings, true};
    uint32_t now = 0; // ms
    Picture picture{int(WINDOW_WIDTH), int(FULL_HEIGHT)};
};

} // namespace tarquil
