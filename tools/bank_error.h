// Banks that the user named: loaded, or said what is wrong with them and where.

#pragma once

#include <memory>
#include <string>

#include "instrument/settings.h"

// What the load of the bank at `path` that returned `code` (not 0) came up against:
// "PATH: line 3: no \"=\" with a value after it", "PATH: instrument5: an odd number of hex digits".
// Reads the file again.
std::string explain_bank_error(const std::string& path, int code);

// The bank at `path` as it is in the file, choices beyond their list included; instruments without
// a name get "instrument_N".  BadInput when it can not be loaded.
std::unique_ptr<TarqSettings> load_bank_file(const std::string& path);
