// Banks that the user named.

#pragma once

#include <memory>
#include <string>

#include "instrument/settings.h"

namespace tarquil {

// The bank at `path` as it is in the file, choices beyond their list included; instruments without
// a name get "instrument_N".  The name of a bank that comes with the program is that bank, "./gm" a
// file.  BadInput when it can not be loaded.
std::unique_ptr<TarqSettings> load_bank_file(const std::string& path, LoadReport& report);

// The same, fit for the engine.
void load_bank_to_play(TarqSettings& bank, const std::string& path, LoadReport& report);

} // namespace tarquil
