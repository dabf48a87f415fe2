// The files that a bank is taken apart into: "NNN-NAME.tqi" for each instrument, and the globals.

#pragma once

#include <map>
#include <string>
#include <string_view>

#include "instrument/settings.h"

namespace tarquil {

// The global controllers, title and author in the key/value text.
inline constexpr const char* GLOBALS_FILE = "globals.txt";

// The instrument at `path` ("-" is standard input), which gets `name` when it has none.
// BadInput when it can not be loaded.
Instrument load_instrument_file(const std::string& path, const std::string& name,
                                LoadReport& report);

// Takes global controllers, title and author from the file; what it lacks keeps defaults.
void load_globals_file(TarqSettings& bank, const std::string& path, LoadReport& report);

// "007-lead.tqi"; what a file name can not hold becomes "_".
std::string instrument_file_name(unsigned number, std::string_view name);

// The instrument files in `directory` by number.  BadInput when the directory can not be read, a
// number is above 127 or there twice.
std::map<unsigned, std::string> find_instrument_files(const std::string& directory);

// Replaces the file as a whole; a Failure when that can not be done.
void save_file(const std::string& path, std::string_view text);
void save_bank_file(const TarqSettings& bank, const std::string& path);

} // namespace tarquil
