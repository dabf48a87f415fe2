// An editor of a player in a window: a model that outlives its windows, and the window.

#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>

#include "editor/model/editor_model.h"
#include "editor/model/editor_settings.h"
#include "editor/view/editor_view.h"
#include "editor/window/editor_window.h"
#include "player/player.h"

namespace tarquil {

// All calls but `is_open` come from one thread, the host's for user interfaces.
class EditorFrame {
  public:
    // Both stay as long as the object.
    EditorFrame(Player& edited_player, EditorSynth& edited_synth);
    EditorFrame(const EditorFrame&) = delete;
    EditorFrame& operator=(const EditorFrame&) = delete;
    ~EditorFrame();

    // Opens a window in the host's window `parent`, or one of its own for 0, which then takes keys.
    // False when there is none to be had.
    bool open(uintptr_t parent);
    void close();
    [[nodiscard]] bool is_open() const { return shown; }
    // Events, and what has changed.
    void idle();

    // In pixels; of the next window while none is open.
    [[nodiscard]] int width();
    [[nodiscard]] int height();

    // Null while no window is open.
    EditorWindow* get_window() { return window.get(); }

    // The user has chosen another size.
    std::function<void(int width, int height)> on_resize;

  private:
    double scale();
    void keep_settings();

    Player& player;
    EditorSynth& synth;
    EditorSettings settings;
    std::unique_ptr<EditorModel> model; // from the first opening on: it remembers what to undo
    std::unique_ptr<EditorView> view;
    std::unique_ptr<EditorWindow> window;
    std::atomic<bool> shown{false};
    uint32_t shown_changes = 0; // of the player
};

} // namespace tarquil
