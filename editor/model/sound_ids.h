// Ids of sounds, a line each, in a small file of the user's.

#pragma once

#include <string>
#include <vector>

namespace tarquil {

// $XDG_CONFIG_HOME/tarquil/NAME, else ~/.config/tarquil/NAME; empty without either.
std::string sound_ids_path(const char* name);

// What can be kept: not this bank's sounds, whose ids are empty.
bool is_kept_id(const std::string& id);

// None where the file is missing.
std::vector<std::string> read_sound_ids(const std::string& path);
// Makes the folder when it is missing.  Empty, or why it could not be written.
std::string write_sound_ids(const std::string& path, const std::vector<std::string>& ids);

} // namespace tarquil
