// Names and titles: the defaults, and what of them survives being saved.

#pragma once

#include <string>

#include "instrument/settings.h"
#include "instrument/storable_text.h"

namespace tarquil {

// The name of an instrument that was given none: "instrument_N".
std::string default_instrument_name(unsigned number);

// What a new bank of the plug-in has as program `number`: the default sound under that name.
Instrument built_in_instrument(unsigned number);

// Default names for all instruments.
void set_default_names(TarqSettings& bank);

// Applies without_lone_blanks to the title and the author.
void remove_lone_blanks(TarqSettings& bank);

} // namespace tarquil
