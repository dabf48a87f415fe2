// What the editor remembers from one opening to the next.

#include "editor/model/editor_settings.h"

#include <filesystem>

#include "common/load_string.h"
#include "common/platform/atomic_file.h"
#include "common/platform/user_folder.h"
#include "instrument/text_file_memory_writer.h"
#include "instrument/text_file_reader.h"

namespace tarquil {

std::string editor_settings_path() {
    const std::string base = user_folder("XDG_CONFIG_HOME", ".config");
    return base.empty() ? "" : base + "/tarquil/editor.conf";
}

EditorSettings load_editor_settings(const std::string& path) {
    EditorSettings settings;
    std::string text;
    TextFileReader reader;
    if (path.empty() || load_regular_file_to_string(path, text) != 0)
        return settings;
    reader.load_from_string(text);
    float scale = 0.0F;
    if (reader.get_float("scale", scale) && double(scale) >= EditorSettings::MIN_SCALE &&
        double(scale) <= EditorSettings::MAX_SCALE) {
        settings.scale = double(scale);
        settings.is_scale_chosen = true;
    }
    reader.get_str("folder", settings.folder);
    float keyboard = 1.0F;
    reader.get_float("keyboard", keyboard);
    settings.shows_keyboard = keyboard != 0.0F;
    reader.get_str("theme", settings.theme);
    float strikes = 0.0F;
    reader.get_float("strike_again", strikes);
    settings.strikes_again = strikes != 0.0F;
    return settings;
}

bool save_editor_settings(const std::string& path, const EditorSettings& settings) {
    if (path.empty())
        return false;
    std::error_code error;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path(), error);
    TextFileMemoryWriter writer;
    writer.write_int("keyboard", settings.shows_keyboard ? 1 : 0);
    if (settings.strikes_again)
        writer.write_int("strike_again", 1);
    if (settings.is_scale_chosen)
        writer.write_float("scale", float(settings.scale));
    const auto write = [&writer](const char* key, const std::string& value) {
        if (!value.empty() && value.find_first_of("#\r\n") == std::string::npos)
            writer.write_str(key, value);
    };
    write("folder", settings.folder);
    write("theme", settings.theme);
    AtomicFile file;
    return file.open(path) && file.commit(writer.get_string());
}

} // namespace tarquil
