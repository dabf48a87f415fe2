// Banks that the user named.

#pragma once

#include <memory>
#include <string>

#include "instrument/settings.h"

namespace tarquil {

// The bank at `path` as it is in the file, choices beyond their list included; instruments without
// a name get "instrument_N".  BadInput when it can not be loaded.
std::unique_ptr<TarqSettings> load_bank_file(const std::string& path, LoadReport& report);

} // namespace tarquil
