// What a sound is tried with in the browser.

#pragma once

#include "instrument/instrument.h"
#include "instrument/phrase.h"

namespace tarquil {

// The phrase that its comment names, else one that fits its category.
Phrase audition_phrase(const Instrument& sound);

} // namespace tarquil
