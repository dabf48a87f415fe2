// Replaces a player's edited program, or its bank, by what a text or a file holds.
//
// Each returns 0, or an error code of Instrument or TarqSettings; a load that fails changes
// nothing.

#pragma once

#include <string>
#include <string_view>

namespace tarquil {

class Player;

int replace_program(Player& player, std::string_view text);
int replace_program_by_file(Player& player, const std::string& path);
int replace_bank(Player& player, std::string_view text);
int replace_bank_by_file(Player& player, const std::string& path);

} // namespace tarquil
