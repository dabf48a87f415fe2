// The whole editor as a picture that takes input: header, tabs, one page, and what lies over them.
//
// It sees a cairo context and the model, never a window.  Positions are in units of the editor's
// own: the window divides by its scale.

#pragma once

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "vst/editor/model/editor_model.h"
#include "vst/editor/model/editor_settings.h"
#include "vst/editor/plots/response_worker.h"
#include "vst/editor/ui/level_meter.h"
#include "vst/editor/ui/page.h"
#include "vst/editor/ui/window_size.h"

class EditorView : public UiHost {
  public:
    // Reads the settings file at `path`, and writes it when the user changes something in it; none
    // when it is empty.
    EditorView(EditorSynth& synth, std::string path);
    // A gesture ends.
    ~EditorView() override;

    // `scale`: pixels of the context per unit.
    void draw(cairo_t* context, double scale);

    // `seconds` have passed.  True when there is something new to draw.
    bool idle(double seconds);

    void press(Pointer pointer);
    void move(const Pointer& pointer);
    void release(const Pointer& pointer);
    // Steps upwards are positive.
    void wheel(const Pointer& pointer, double steps);
    void leave();
    // False for a key that is left to the host.
    bool press_key(const KeyPress& key);

    // True while a text field is open.
    [[nodiscard]] bool takes_text() const {
        return !overlays.empty() && overlays.back()->takes_text();
    }

    // Keys reach the controls, Tab moves between them: for a window that is no host's.
    void set_keyboard_navigation(bool on) { has_keyboard = on; }

    [[nodiscard]] double get_scale() const { return settings.scale; }
    // Called when the user chooses another.
    std::function<void(double scale)> on_scale;

    void show_page(unsigned index);
    [[nodiscard]] const std::vector<Page>& get_pages() const { return pages; }
    void wait_for_responses();

    EditorModel& get_model() override { return model; }
    ViewState& get_view_state() override { return view_state; }
    const EditorMeters& get_meters() override { return meters; }
    ResponseWorker& get_responses() override { return responses; }
    void open_overlay(std::unique_ptr<Overlay> overlay) override;
    void choose_file(FileRequest request) override;
    void show_message(const std::string& text) override { message = text; }

  private:
    [[nodiscard]] Widget* widget_at(Point at);
    [[nodiscard]] WidgetState state_of(const Widget* widget) const;
    void draw_page(Canvas& canvas);
    void draw_tooltip(Canvas& canvas);
    bool update_meters(double seconds);
    void drop_finished_overlays();
    void move_focus(int steps);
    void set_scale(double scale);
    void save_settings();

    EditorModel model;
    const std::string settings_path;
    EditorSettings settings;
    ViewState view_state;
    ResponseWorker responses;
    EditorMeters meters;
    LevelMeter level_meter;
    std::array<double, NUM_CHANNELS> channel_lights{};

    std::vector<Page> pages;
    unsigned current_page = 0;
    Page header; // and the tabs

    std::vector<std::unique_ptr<Overlay>> overlays;
    Widget* hovered = nullptr;
    Widget* pressed = nullptr;
    Widget* focused = nullptr;
    bool has_keyboard = false;
    Point pointer_at;
    double still_for = 0.0; // seconds that the pointer has not moved
    std::string message;
    bool is_changed = true;
    double since_press = 1e9; // seconds
    Point last_press;
};
