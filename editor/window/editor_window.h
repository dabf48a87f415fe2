// A window on the screen that shows an EditorView: in a host's window, or one of its own.
//
// Every call comes from one thread, the host's for user interfaces.  Errors of the window system (a
// host may destroy its window first) end the drawing, never the process.

#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace tarquil {

class EditorView;

class EditorWindow {
  public:
    // `parent` is the host's window, or 0 for a window of its own with `title`.
    EditorWindow(uintptr_t parent, EditorView& shown_view, const std::string& title);
    EditorWindow(const EditorWindow&) = delete;
    EditorWindow& operator=(const EditorWindow&) = delete;
    ~EditorWindow();

    // True when a window could be made.
    [[nodiscard]] bool is_open() const;
    // A window in a host's is to be seen, and was so at the last of the looks of every 30 idles.
    [[nodiscard]] bool is_seen() const;
    // The user has closed the window of its own.
    [[nodiscard]] bool is_closed_by_user() const;

    // The same, shown by what shows windows.
    void set_title(const std::string& title);
    // Asked when the user closes the window of its own: false keeps it open.
    std::function<bool()> may_close;

    // A window of its own stays above that window.
    void stay_above(uintptr_t window);

    // Its number in the window system, for hosts that want it.
    [[nodiscard]] uintptr_t native_handle() const;

    // Events, the view's tick, and drawing where something has changed.
    void idle();

    // In pixels, at the view's scale.
    [[nodiscard]] int width() const;
    [[nodiscard]] int height() const;

    // Called after the view's scale has changed the size, so that a host can follow.
    std::function<void(int width, int height)> on_resize;

  private:
    struct Content;
    std::unique_ptr<Content> content;
};

} // namespace tarquil
