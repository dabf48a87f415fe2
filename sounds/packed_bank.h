// A bank in few bytes, for what a program brings with it: only what differs from a new bank.
//
// No format of files: it is written when the program is built and read by the same build.

#pragma once

#include <string>
#include <string_view>

#include "instrument/settings.h"

namespace tarquil {

// Of the lines that are not known, neither the bank's nor the instruments' are packed.
std::string pack_bank(const TarqSettings& bank);

// The bank that was packed; `packed` is trusted.
TarqSettings unpack_bank(std::string_view packed);

} // namespace tarquil
