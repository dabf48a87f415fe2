// Names and titles: the defaults, and what of them survives being saved.

#include "instrument/names.h"

namespace tarquil {

std::string default_instrument_name(unsigned number) {
    return "instrument_" + std::to_string(number);
}

Instrument built_in_instrument(unsigned number) {
    Instrument instrument;
    instrument.set_name(default_instrument_name(number));
    instrument.set_filename("instr_" + std::to_string(number) + ".tqi");
    return instrument;
}

void set_default_names(TarqSettings& bank) {
    for (unsigned i = 0; i < MAX_INSTRUMENTS; i++)
        bank.get_instrument(i).set_name(default_instrument_name(i));
}

void remove_lone_blanks(TarqSettings& bank) {
    bank.set_song_title(without_lone_blanks(bank.get_song_title()));
    bank.set_song_author(without_lone_blanks(bank.get_song_author()));
}

} // namespace tarquil
