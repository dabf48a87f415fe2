// The sounds that the user likes.

#include "editor/model/favourites.h"

#include <filesystem>
#include <sstream>

#include "common/load_string.h"
#include "common/platform/user_folder.h"
#include "common/platform/whole_file.h"

namespace tarquil {

Favourites::Favourites(std::string file_path) : path(std::move(file_path)) {
    std::string text;
    if (path.empty() || load_regular_file_to_string(path, text) != 0)
        return;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (!line.empty())
            ids.insert(line);
    }
}

std::string Favourites::usual_path() {
    const std::string base = user_folder("XDG_CONFIG_HOME", ".config");
    return base.empty() ? "" : base + "/tarquil/favourites";
}

std::string Favourites::toggle(const std::string& id) {
    if (id.empty() || id.find('\n') != std::string::npos)
        return "this sound cannot be a favourite";
    if (ids.erase(id) == 0)
        ids.insert(id);
    std::string text;
    for (const std::string& each : ids)
        text += each + "\n";
    std::error_code error;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path(), error);
    return write_whole_file(path, text);
}

} // namespace tarquil
