// An editor of a player in a window.

#include "frame/editor_frame.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "common/log/log.h"
#include "editor/window/display_scale.h"

namespace tarquil {

namespace {

constexpr double SAME_SCALE = 0.005; // less is a pixel's rounding

} // namespace

EditorFrame::EditorFrame(Player& edited_player, EditorSynth& edited_synth)
    : player(edited_player), synth(edited_synth) {}

EditorFrame::~EditorFrame() {
    close();
}

double EditorFrame::scale() {
    if (view != nullptr)
        return view->scale();
    load_settings();
    return settings.scale;
}

int EditorFrame::height_in_units() {
    if (view == nullptr)
        load_settings();
    return EditorView::height(settings);
}

void EditorFrame::load_settings() {
    settings = load_editor_settings(editor_settings_path());
    const DisplayScale display = read_display_scale(EditorView::height(settings));
    scales.largest =
        std::clamp(display.largest, EditorSettings::MIN_SCALE, EditorSettings::MAX_SCALE);
    // Many hosts say 1 because they know nothing.
    const bool has_host_said = host_scale && *host_scale != 1.0;
    scales.usual = has_host_said
                       ? *host_scale
                       : std::clamp(display.usual, EditorSettings::MIN_SCALE, scales.largest);
    if (given_scale)
        settings.scale = *given_scale;
    else if (settings.is_scale_chosen)
        settings.scale = std::min(settings.scale, scales.largest);
    else
        settings.scale = scales.usual;
}

bool EditorFrame::suggest_scale(double scale) {
    if (is_open() || !std::isfinite(scale) ||
        load_editor_settings(editor_settings_path()).is_scale_chosen)
        return false;
    host_scale = std::clamp(scale, EditorSettings::MIN_SCALE, EditorSettings::MAX_SCALE);
    return true;
}

void EditorFrame::fit_size(int& width, int& height) {
    const double units = height_in_units();
    // A size that this has given stays: its height is the rounded one.
    const auto height_of = [units](int of_width) {
        return int(std::lround(units * of_width / EditorView::WIDTH));
    };
    if (height_of(width) > height)
        width = int(double(EditorView::WIDTH) * height / units);
    width = std::clamp(width, int(std::ceil(EditorView::WIDTH * EditorSettings::MIN_SCALE)),
                       int(EditorView::WIDTH * EditorSettings::MAX_SCALE));
    height = height_of(width);
}

void EditorFrame::resize(int width, int height) {
    fit_size(width, height);
    given_scale = double(width) / EditorView::WIDTH;
    if (view == nullptr || std::abs(settings.scale - *given_scale) < SAME_SCALE)
        return;
    settings.scale = *given_scale; // which the view refers to
    settings.is_scale_chosen = true;
}

bool EditorFrame::is_closed_by_user() const {
    return window != nullptr && (window->is_closed_by_user() || view->is_close_chosen());
}

void EditorFrame::make_model() {
    if (model == nullptr)
        model = std::make_unique<EditorModel>(synth);
}

void EditorFrame::keep_document(const std::string& path) {
    make_model();
    document = std::make_unique<BankDocument>(player, *model, path);
}

// The title says which file it is.
void EditorFrame::follow_document() {
    if (document == nullptr || document->title() == title)
        return;
    title = document->title();
    window->set_title(title);
}

int EditorFrame::width() {
    return int(std::lround(EditorView::WIDTH * scale()));
}

int EditorFrame::height() {
    return int(std::lround(height_in_units() * scale()));
}

bool EditorFrame::open(uintptr_t parent) {
    close();
    load_settings();
    make_model();
    shown_changes = player.num_changes();
    model->refresh();
    view = std::make_unique<EditorView>(*model, settings, parent == 0, document.get(),
                                        plays_computer_keys);
    view->set_scale_range(scales);
    window = std::make_unique<EditorWindow>(parent, *view, title);
    if (!window->is_open()) {
        logPrintf("no window could be opened\n");
        window.reset();
        view.reset();
        return false;
    }
    window->on_resize = [this](int new_width, int new_height) {
        if (on_resize)
            on_resize(new_width, new_height);
        keep_settings();
    };
    if (parent == 0 && window_below != 0)
        window->stay_above(window_below);
    window->may_close = [this] { return view->may_close(); };
    static_cast<void>(synth.read_keys()); // what was struck while nobody looked
    player.meters().watched = true;
    last_idle = std::chrono::steady_clock::now();
    shown = true;
    follow_document();
    return true;
}

void EditorFrame::close() {
    if (!shown)
        return;
    shown = false;
    player.meters().watched = false;
    model->end_gesture();
    synth.window_closed();
    keep_settings();
    host_scale.reset();
    given_scale.reset();
    window.reset();
    view.reset();
}

void EditorFrame::keep_settings() {
    settings.scale = view->scale();
    if (!save_editor_settings(editor_settings_path(), settings))
        logPrintf("the editor's settings could not be saved\n");
}

void EditorFrame::idle() {
    if (!shown)
        return;
    const auto now = std::chrono::steady_clock::now();
    synth.pass_time(std::chrono::duration<double>(now - std::exchange(last_idle, now)).count());
    const uint32_t changes = player.num_changes();
    if (changes != shown_changes)
        view->host_changed();
    shown_changes = changes;
    window->idle();
    follow_document();
}

} // namespace tarquil
