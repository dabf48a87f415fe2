// `tarquil bank show`: the controllers of an instrument or of the global section.

#pragma once

#include <string>

#include "instrument/settings.h"

namespace tarquil {

// The text to print: a line per controller with its key, the value in the file, the byte, and what
// it stands for with its unit.  As JSON an object with the same.
std::string show_instrument(const TarqSettings& bank, unsigned number, bool json);
std::string show_globals(const TarqSettings& bank, bool json);

} // namespace tarquil
