// Replaces a player's edited program, or its bank, by what a text or a file holds.

#include "player/checked_replace.h"

#include "instrument/checked_load.h"
#include "player/player.h"

namespace tarquil {

namespace {

template <typename Load> int load_program(Player& player, const Load& load) {
    const unsigned program = player.edited_program();
    Instrument fresh = player.get_instrument(program);
    const int error = load(fresh);
    if (error == 0)
        player.load_instrument(program, fresh);
    return error;
}

template <typename Load> int load_bank(Player& player, const Load& load) {
    TarqSettings fresh = player.get_bank();
    const int error = load(fresh);
    if (error == 0)
        player.set_bank(fresh);
    return error;
}

} // namespace

int replace_program(Player& player, std::string_view text) {
    return load_program(player, [&](Instrument& fresh) {
        return load_instrument_checked_from_string(fresh, text);
    });
}

int replace_program_by_file(Player& player, const std::string& path) {
    return load_program(player,
                        [&](Instrument& fresh) { return load_instrument_checked(fresh, path); });
}

int replace_bank(Player& player, std::string_view text) {
    return load_bank(
        player, [&](TarqSettings& fresh) { return load_bank_checked_from_string(fresh, text); });
}

int replace_bank_by_file(Player& player, const std::string& path) {
    return load_bank(player, [&](TarqSettings& fresh) { return load_bank_checked(fresh, path); });
}

} // namespace tarquil
