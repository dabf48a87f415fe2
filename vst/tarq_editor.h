// The plug-in's editor: a model of the plug-in that outlives its windows, and the window.

#pragma once

#include <atomic>
#include <memory>

#include "editor/model/editor_model.h"
#include "editor/model/editor_settings.h"
#include "editor/view/editor_view.h"
#include "editor/window/editor_window.h"
#include "vst/plugin_editor.h"
#include "vst/plugin_synth.h"

namespace tarquil {

class TarqEditor : public PluginEditor {
  public:
    explicit TarqEditor(TarqVST& edited_plugin);
    ~TarqEditor() override;

    bool getRect(ERect** rect) override;
    bool open(void* parent) override;
    // A window of its own, not in a host's.
    bool open_alone();
    void close() override;
    [[nodiscard]] bool isOpen() const override { return is_open; }
    void idle() override;
    void tarq_update() override { has_changed = true; }

    // Null while no window is open.
    EditorWindow* get_window() { return window.get(); }

  private:
    bool show(uintptr_t parent, bool keyboard);
    void keep_settings();

    TarqVST& plugin;
    PluginSynth synth;
    EditorSettings settings;
    std::unique_ptr<EditorModel> model; // from the first opening on: it remembers what to undo
    std::unique_ptr<EditorView> view;
    std::unique_ptr<EditorWindow> window;
    ERect rect;
    std::atomic<bool> is_open{false};
    std::atomic<bool> has_changed{false};
};

} // namespace tarquil
