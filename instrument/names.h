// Names and titles: the defaults, and what of a text survives being saved.

#pragma once

#include <string>
#include <string_view>

#include "instrument/settings.h"

namespace tarquil {

// The name of an instrument that was given none: "instrument_N".
std::string default_instrument_name(unsigned number);

// Default names for all instruments.
void set_default_names(TarqSettings& bank);

// What a user types, as a saved file keeps it: without blanks at both ends, and "_" for line
// breaks, other control characters and the "#" that starts a comment.
std::string storable_text(std::string_view typed);

// A title or author as it was saved: an empty one comes back as the blank in front of it.
std::string without_lone_blanks(const std::string& text);

// Applies that to the title and the author.
void remove_lone_blanks(TarqSettings& bank);

} // namespace tarquil
