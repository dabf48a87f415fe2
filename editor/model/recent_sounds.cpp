// The sounds that the user has loaded last.

#include "editor/model/recent_sounds.h"

#include <algorithm>

#include "editor/model/sound_ids.h"

namespace tarquil {

RecentSounds::RecentSounds(std::string file_path)
    : path(std::move(file_path)), ids(read_sound_ids(path)) {}

std::string RecentSounds::note(const std::string& id) {
    if (!is_kept_id(id))
        return "";
    std::vector<std::string> kept = read_sound_ids(path);
    if (!kept.empty())
        ids = std::move(kept);
    std::erase(ids, id);
    ids.insert(ids.begin(), id);
    ids.resize(std::min(ids.size(), MAX_SOUNDS));
    return write_sound_ids(path, ids);
}

} // namespace tarquil
