// The editor's window of the stand-alone program.

#include "standalone/play_window.h"

#include "frame/editor_frame.h"
#include "frame/player_synth.h"
#include "standalone/computer_keys.h"

namespace tarquil {

namespace {

class EditorPlayWindow : public PlayWindow {
  public:
    explicit EditorPlayWindow(Player& player)
        : synth(player), editor(player, synth), keys(player) {}

    bool open() {
        if (!editor.open(0))
            return false;
        editor.get_window()->on_unused_key = [this](uint32_t key, bool is_pressed) {
            keys.press(key, is_pressed);
        };
        return true;
    }

    bool idle() override {
        editor.idle();
        return !editor.get_window()->is_closed_by_user();
    }

  private:
    PlayerSynth synth;
    EditorFrame editor;
    ComputerKeys keys;
};

} // namespace

std::unique_ptr<PlayWindow> open_play_window(Player& player, std::string& reason) {
    auto window = std::make_unique<EditorPlayWindow>(player);
    if (window->open())
        return window;
    reason = "no window can be opened: is DISPLAY set? --no-window plays without one";
    return nullptr;
}

} // namespace tarquil
