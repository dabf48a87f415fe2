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

// The name of an instrument that was given none: "instrument_N".
std::string default_instrument_name(unsigned number);
void set_default_names(TarqSettings& bank);

// A title or author as it was saved: an empty one comes back as the blank in front of it.
std::string without_lone_blanks(const std::string& text);
