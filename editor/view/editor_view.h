// The whole editor as a picture that takes input: header, tabs, one page, and what lies over them.
//
// It sees a cairo context and the model, never a window.  Positions are in units of the editor's
// own: the window divides by its scale.

#pragma once

#include <array>
#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "editor/kit/drawn_store.h"
#include "editor/kit/level_meter.h"
#include "editor/kit/page.h"
#include "editor/kit/window_size.h"
#include "editor/model/editor_model.h"
#include "editor/model/editor_settings.h"
#include "editor/model/hands.h"
#include "editor/plots/response_worker.h"
#include "editor/view/keyboard.h"
#include "editor/view/scale_range.h"
#include "editor/view/status_line.h"

namespace tarquil {

class EditorView : public UiHost {
  public:
    static constexpr int WIDTH = int(WINDOW_WIDTH); // units
    // With the keyboard along the bottom, or without it.
    [[nodiscard]] static int height(const EditorSettings& settings) {
        return int(settings.shows_keyboard ? FULL_HEIGHT : WINDOW_HEIGHT);
    }
    [[nodiscard]] int height() const { return height(settings); }

    // All outlive the view.  The window saves the settings.  `keyboard`: keys reach the controls,
    // Tab moves between them, for a window that is no host's.  `kept` may be null.
    // `computer_keys`: those that nothing else uses play notes, from the start on.
    EditorView(EditorModel& shown_model, EditorSettings& shown_settings, bool keyboard,
               EditorDocument* kept = nullptr, bool computer_keys = false);
    // A gesture ends.
    ~EditorView() override;

    // The context is scaled to the editor's units.
    void draw(cairo_t* context);
    // Draws what has changed since the last drawing, which the context still shows.  Returns where.
    std::vector<Rect> draw_changes(cairo_t* context);

    // Rather than where meters have moved.
    [[nodiscard]] bool needs_whole_drawing() const { return is_changed; }

    // Reads what has changed.  True when there is something new to draw.
    bool tick(double seconds_since_last);

    // Values may have changed; from any thread.
    void host_changed() { may_have_changed.store(true, std::memory_order_relaxed); }

    void press(const PointerEvent& event);
    void release(const PointerEvent& event);
    // Over the window, or a drag between press and release.
    void move(const PointerEvent& event);
    void leave();
    // Steps upwards are positive.
    void wheel(const PointerEvent& event, double steps);
    // False for a key that is left to the host.
    bool key(const KeyEvent& event);

    // True while a text field is open.
    [[nodiscard]] bool wants_keys() const {
        return !overlays.empty() && overlays.back()->takes_text();
    }

    // The computer's keys as a piano: `code` names the key, `character` is what it types without
    // Shift.  A key that is held comes once.
    void press_computer_key(uint32_t code, uint32_t character);
    void release_computer_key(uint32_t code);
    [[nodiscard]] const std::set<uint32_t>& computer_keys_down() {
        return hands.computer_keys().get_down();
    }
    [[nodiscard]] bool plays_computer_keys() const { return hands.plays_computer_keys(); }

    // A file that the desktop's user drags over the window, drops on it or takes away.  False:
    // there is no taking it now.
    bool drag_file(Point at);
    void drop_files(const std::vector<std::string>& paths, Point at);
    void end_file_drag();

    // What the display is fit for.
    void set_scale_range(const ScaleRange& range) { scales = range; }
    // What the user has chosen, EditorSettings::MIN_SCALE to MAX_SCALE.
    [[nodiscard]] double scale() const { return settings.scale; }

    // The user wants to close the window.  False: there are edits to save, which is asked, and
    // `is_close_chosen` once it is answered so.
    [[nodiscard]] bool may_close();
    [[nodiscard]] bool is_close_chosen() const { return close_chosen; }

    // All of it as screen readers are told, and what their users do then.
    Spoken spoken();
    void act(const std::function<void()>& action);

    void show_page(unsigned index);
    [[nodiscard]] const std::vector<Page>& get_pages() const { return pages; }
    void wait_for_responses();

    EditorModel& get_model() override { return model; }
    ViewState& get_view_state() override { return view_state; }
    const EditorMeters& get_meters() override { return meters; }
    ResponseWorker& get_responses() override { return responses; }
    void open_overlay(std::unique_ptr<Overlay> overlay) override;
    void choose_file(FileRequest request) override;
    [[nodiscard]] std::optional<unsigned> channel_at(Point at) override;
    using UiHost::show_message;
    void show_message(const std::string& text, MessageKind kind) override;
    void set_clipboard(const std::string& text) override;
    std::string get_clipboard() override;
    ThemeKind get_theme() override;
    void set_theme(ThemeKind theme) override;
    bool strikes_again() override { return settings.strikes_again; }
    void set_strikes_again(bool is_on) override { settings.strikes_again = is_on; }
    EditorDocument* get_document() override { return document; }

    // The window's ways to the desktop's clipboard; without them the view keeps its text itself.
    std::function<bool(const std::string& text)> write_clipboard;
    std::function<std::string()> read_clipboard;

  private:
    static constexpr double TOOLTIP_DELAY = 0.6; // seconds

    [[nodiscard]] std::vector<Page*> shown_pages();
    void show_keyboard(bool shown);
    [[nodiscard]] Widget* widget_at(Point at);
    void hide_page();
    [[nodiscard]] WidgetState state_of(const Widget* widget) const;
    void draw_ground(Canvas& canvas);
    void draw_page(Canvas& canvas);
    std::vector<Rect> draw_meters(Canvas& canvas);
    void draw_overlays(Canvas& canvas);
    [[nodiscard]] std::string tooltip_text();
    [[nodiscard]] Spoken spoken_widget(Widget& widget);
    [[nodiscard]] Spoken spoken_page(const Page& page, const std::string& name);
    std::vector<Widget*> meter_widgets();
    bool update_meters(double seconds);
    bool update_notice(double seconds);
    bool update_learning();
    bool update_tempo();
    void draw_learned_frame(Canvas& canvas, const Widget& widget);
    bool update_scope(double seconds);
    void drop_finished_overlays();
    [[nodiscard]] Overlay* overlay_at(Point at);
    void press_panel(const Pointer& pointer);
    void move_focus(int steps);
    bool use_key(const KeyEvent& event);
    void choose_scale(double scale);
    bool use_shortcut(const KeyEvent& event); // with the control key
    [[nodiscard]] bool is_double_click(const PointerEvent& event);

    EditorModel& model;
    EditorSettings& settings;
    EditorDocument* const document;
    const Overlay* closing_question = nullptr; // while it is open
    bool close_chosen = false;
    ScaleRange scales;
    std::atomic<bool> may_have_changed{true};
    ViewState view_state;
    ResponseWorker responses;
    DrawnStore drawn_store;
    EditorMeters meters;
    LevelMeter level_meter;
    std::array<double, NUM_CHANNELS> channel_lights{};

    std::vector<Page> pages;
    unsigned current_page = 0;
    Page header; // and the tabs

    Hands hands;
    KeyLayout key_layout{PIANO_AREA};
    Page keyboard_page;

    std::vector<std::unique_ptr<Overlay>> overlays;
    Widget* hovered = nullptr;
    Widget* pressed = nullptr;
    Widget* focused = nullptr;
    const bool has_keyboard;
    Point pointer_at;
    std::string kept_clipboard;
    double still_for = 0.0; // seconds that the pointer has not moved
    StatusLine status;
    double until_notice = 0.0; // seconds to its next reading
    bool is_changed = true;
    bool are_meters_new = false;
    double until_meters = 0.0; // seconds to their next reading
    double since_meters = 0.0; // seconds from their last one
    // of the last press that was no second one of a double click
    uint32_t press_time = 0;
    Point press_at;
    bool was_pressed = false;
};

} // namespace tarquil
