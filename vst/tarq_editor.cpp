// The plug-in's editor: a model of the plug-in that outlives its windows, and the window.

#include "vst/tarq_editor.h"

#include <cmath>

#include "common/log/log.h"
#include "vst/tarq_vst.h"

namespace tarquil {

TarqEditor::TarqEditor(TarqVST& edited_plugin) : plugin(edited_plugin), synth(edited_plugin) {}

TarqEditor::~TarqEditor() {
    TarqEditor::close();
}

bool TarqEditor::getRect(ERect** result) {
    if (view == nullptr)
        settings = load_editor_settings(editor_settings_path());
    const double scale = view == nullptr ? settings.scale : view->scale();
    rect.right = int16_t(std::lround(EditorView::WIDTH * scale));
    rect.bottom = int16_t(std::lround(EditorView::HEIGHT * scale));
    *result = &rect;
    return true;
}

bool TarqEditor::open(void* parent) {
    return parent != nullptr && show(reinterpret_cast<uintptr_t>(parent), false);
}

bool TarqEditor::open_alone() {
    return show(0, true);
}

bool TarqEditor::show(uintptr_t parent, bool keyboard) {
    close();
    settings = load_editor_settings(editor_settings_path());
    if (model == nullptr)
        model = std::make_unique<EditorModel>(synth);
    model->refresh();
    view = std::make_unique<EditorView>(*model, settings, keyboard);
    window = std::make_unique<EditorWindow>(parent, *view, "Tarquil");
    if (!window->is_open()) {
        logPrintf("no window could be opened\n");
        window.reset();
        view.reset();
        return false;
    }
    window->on_resize = [this](int width, int height) {
        plugin.sizeWindow(width, height);
        keep_settings();
    };
    plugin.meters.watched = true;
    is_open = true;
    return true;
}

void TarqEditor::close() {
    if (!is_open)
        return;
    is_open = false;
    plugin.meters.watched = false;
    model->end_gesture();
    keep_settings();
    window.reset();
    view.reset();
}

void TarqEditor::keep_settings() {
    settings.scale = view->scale();
    if (!save_editor_settings(editor_settings_path(), settings))
        logPrintf("the editor's settings could not be saved\n");
}

void TarqEditor::idle() {
    if (!is_open)
        return;
    if (has_changed.exchange(false))
        view->host_changed();
    window->idle();
}

} // namespace tarquil
