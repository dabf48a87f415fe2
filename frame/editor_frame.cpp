// An editor of a player in a window.

#include "frame/editor_frame.h"

#include <cmath>

#include "common/log/log.h"

namespace tarquil {

EditorFrame::EditorFrame(Player& edited_player, EditorSynth& edited_synth)
    : player(edited_player), synth(edited_synth) {}

EditorFrame::~EditorFrame() {
    close();
}

double EditorFrame::scale() {
    if (view != nullptr)
        return view->scale();
    settings = load_editor_settings(editor_settings_path());
    return settings.scale;
}

int EditorFrame::width() {
    return int(std::lround(EditorView::WIDTH * scale()));
}

int EditorFrame::height() {
    return int(std::lround(EditorView::HEIGHT * scale()));
}

bool EditorFrame::open(uintptr_t parent) {
    close();
    settings = load_editor_settings(editor_settings_path());
    if (model == nullptr)
        model = std::make_unique<EditorModel>(synth);
    shown_changes = player.num_changes();
    model->refresh();
    view = std::make_unique<EditorView>(*model, settings, parent == 0);
    window = std::make_unique<EditorWindow>(parent, *view, "Tarquil");
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
    player.meters().watched = true;
    shown = true;
    return true;
}

void EditorFrame::close() {
    if (!shown)
        return;
    shown = false;
    player.meters().watched = false;
    model->end_gesture();
    keep_settings();
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
    const uint32_t changes = player.num_changes();
    if (changes != shown_changes)
        view->host_changed();
    shown_changes = changes;
    window->idle();
}

} // namespace tarquil
