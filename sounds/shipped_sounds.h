// The banks that come with the program, without a file to find: a General MIDI set and the
// originals.
//
// Each is unpacked when it is first asked for, and shared from then on; any thread may ask, but not
// the audio thread.

#pragma once

#include <memory>
#include <string_view>

#include "instrument/settings.h"
#include "player/gm_set.h"

namespace tarquil {

// The General MIDI set: its 128 programs, and what plays beside them: laws, kits and drums; beside
// the originals, too, with laws of their own.
const TarqSettings& shipped_gm_bank();
std::shared_ptr<const GmSet> shipped_gm_set();
inline const TarqSettings& shipped_gm_drums() {
    return *shipped_gm_set()->drums;
}
inline const GmMap& shipped_gm_map() {
    return shipped_gm_set()->map;
}

// 128 sounds of this engine's own.
const TarqSettings& shipped_originals();

// The names that users give them.
inline constexpr std::string_view GM_BANK_NAME = "gm";
inline constexpr std::string_view GM_DRUMS_NAME = "gm-drums";
inline constexpr std::string_view ORIGINALS_NAME = "originals";

// Null for any other name.
const TarqSettings* find_shipped_bank(std::string_view name);

} // namespace tarquil
