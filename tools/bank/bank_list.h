// `tarquil bank list`: which instruments a bank has.

#pragma once

#include <string>

#include "instrument/settings.h"

namespace tarquil {

struct BankListOptions {
    bool all = false;  // the default instruments too
    bool json = false; // an object instead of a table
};

// The text to print.
std::string list_bank(const TarqSettings& bank, const BankListOptions& options);

} // namespace tarquil
