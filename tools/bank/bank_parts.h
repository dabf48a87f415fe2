// What `tarquil bank` does with the parts of a bank: takes it apart and puts it together.

#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "instrument/settings.h"

namespace tarquil {

// Writes a file for each instrument and one for the globals into `directory`, which is made;
// BadInput when it is there and not empty.
void extract_all(const TarqSettings& bank, const std::string& directory);

struct BankInsertion {
    unsigned number = 0;
    std::string file;                // "-" is standard input
    std::optional<std::string> name; // instead of the file's
};

// Replaces one instrument of `bank` as a whole.
void insert_instrument(TarqSettings& bank, const BankInsertion& insertion, LoadReport& report);

struct NewBank {
    std::optional<std::string> title;
    std::optional<std::string> author;
    std::string globals;            // a file; empty for that of a folder, or the defaults
    std::vector<std::string> parts; // folders as extract_all makes them, and "N=FILE"
};

// A bank of default instruments with what is given put in.
std::unique_ptr<TarqSettings> make_bank(const NewBank& request, LoadReport& report);

} // namespace tarquil
