// What the editor remembers from one opening to the next, in a small file of the user's.

#pragma once

#include <string>

namespace tarquil {

struct EditorSettings {
    double scale = 1.0;           // MIN_SCALE..MAX_SCALE
    bool is_scale_chosen = false; // by the user; else it is not kept
    std::string folder;           // that the last file was chosen from; empty: the user's own
    bool shows_keyboard = true;
    std::string theme{}; // by its key; empty: the usual one
    // Held notes are struck again when a control has been edited that they do not hear.
    bool strikes_again = false;

    static constexpr double MIN_SCALE = 0.75;
    static constexpr double MAX_SCALE = 3.0;
};

// $XDG_CONFIG_HOME/tarquil/editor.conf, else ~/.config/tarquil/editor.conf; empty without either.
std::string editor_settings_path();

// Defaults where the file or a value in it is missing or makes no sense.
EditorSettings load_editor_settings(const std::string& path);

// Makes the folder when it is missing.  False when it cannot be written.
bool save_editor_settings(const std::string& path, const EditorSettings& settings);

} // namespace tarquil
