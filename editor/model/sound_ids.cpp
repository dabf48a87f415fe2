// Ids of sounds in a small file of the user's.

#include "editor/model/sound_ids.h"

#include <filesystem>
#include <sstream>

#include "common/load_string.h"
#include "common/platform/user_folder.h"
#include "common/platform/whole_file.h"

namespace tarquil {

std::string sound_ids_path(const char* name) {
    const std::string base = user_folder("XDG_CONFIG_HOME", ".config");
    return base.empty() ? "" : base + "/tarquil/" + name;
}

bool is_kept_id(const std::string& id) {
    return !id.empty() && id.find('\n') == std::string::npos;
}

std::vector<std::string> read_sound_ids(const std::string& path) {
    std::vector<std::string> ids;
    std::string text;
    if (path.empty() || load_regular_file_to_string(path, text) != 0)
        return ids;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (!line.empty())
            ids.push_back(line);
    }
    return ids;
}

std::string write_sound_ids(const std::string& path, const std::vector<std::string>& ids) {
    std::string text;
    for (const std::string& each : ids)
        text += each + "\n";
    std::error_code error;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path(), error);
    return write_whole_file(path, text);
}

} // namespace tarquil
