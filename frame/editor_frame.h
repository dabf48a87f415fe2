// An editor of a player in a window: a model that outlives its windows, and the window.

#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "editor/model/editor_model.h"
#include "editor/model/editor_settings.h"
#include "editor/view/editor_view.h"
#include "editor/window/editor_window.h"
#include "frame/bank_document.h"
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
    // Whether the window is to be seen, and was so before; asks the window system.
    [[nodiscard]] bool is_seen() const { return window != nullptr && window->is_seen(); }
    // Events, and what has changed.
    void idle();

    // In pixels; of the next window while none is open.
    [[nodiscard]] int width();
    [[nodiscard]] int height();
    // The largest size of the window's shape that fits into a size, or the smallest there is.
    void fit_size(int& width, int& height);
    // Takes such a size from the next idle on.
    void resize(int width, int height);
    // The host's scale, for windows whose size the user has never chosen; before the display's own,
    // unless it is 1.  False when it is not taken.
    bool suggest_scale(double scale);

    // Of a window of its own: its title, the window that it stays above (0: none), and whether the
    // user has closed it.
    std::string title = "Tarquil";
    uintptr_t window_below = 0;
    [[nodiscard]] bool is_closed_by_user() const;

    // The computer's keys play from the opening on: for a program that has the keyboard to itself.
    bool plays_computer_keys = false;

    // Null while no window is open.
    EditorWindow* get_window() { return window.get(); }
    UiHost* get_ui() { return view.get(); }

    // For a program that keeps the bank in a file, `path`, empty for none yet: the next window
    // saves it, and asks before it closes.
    void keep_document(const std::string& path);
    BankDocument& get_document() { return *document; }
    const EditorModel& get_model() { return *model; }

    // The user has chosen another size.
    std::function<void(int width, int height)> on_resize;

  private:
    double scale();
    int height_in_units();
    void load_settings();
    void make_model();
    void follow_document();
    void keep_settings();

    Player& player;
    EditorSynth& synth;
    EditorSettings settings;
    std::optional<double> host_scale;   // suggested, until the next window closes
    std::optional<double> given_scale;  // of a size that the host has given, until then
    ScaleRange scales;                  // of the display
    std::unique_ptr<EditorModel> model; // from the first opening on: it remembers what to undo
    std::unique_ptr<BankDocument> document;
    std::unique_ptr<EditorView> view;
    std::unique_ptr<EditorWindow> window;
    std::atomic<bool> shown{false};
    uint32_t shown_changes = 0; // of the player
    std::chrono::steady_clock::time_point last_idle;
};

} // namespace tarquil
