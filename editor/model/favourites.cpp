// The sounds that the user likes.

#include "editor/model/favourites.h"

#include "editor/model/sound_ids.h"

namespace tarquil {

Favourites::Favourites(std::string file_path) : path(std::move(file_path)) {
    for (std::string& id : read_sound_ids(path))
        ids.insert(std::move(id));
}

std::string Favourites::toggle(const std::string& id) {
    if (!is_kept_id(id))
        return "this sound cannot be a favourite";
    if (ids.erase(id) == 0)
        ids.insert(id);
    return write_sound_ids(path, {ids.begin(), ids.end()});
}

} // namespace tarquil
