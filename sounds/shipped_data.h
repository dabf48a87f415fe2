// What the build makes of the folder sounds/, to be unpacked by shipped_sounds.

#pragma once

#include <string_view>

namespace tarquil {

// By pack_bank.
std::string_view packed_gm_bank();
std::string_view packed_gm_drums();
std::string_view packed_originals();

std::string_view gm_map_text();
std::string_view originals_map_text();

} // namespace tarquil
