// Songs that the user named.

#pragma once

#include <string>

#include "midi/smf/smf_reader.h"

namespace tarquil {

// Reads the MIDI file at `path`; "-" is standard input.  BadInput that names the file, the place
// and the reason.
Song load_song(const std::string& path);

} // namespace tarquil
