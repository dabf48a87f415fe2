// Loads that succeed as a whole or change nothing, with every byte fit for the engine.
//
// What the engine, the renderer and the plug-in load goes through here.  After a load that
// succeeded every controller that picks one of a list has a byte within it; after one that failed
// the caller's object is as it was.  An empty title stays empty.  The error codes are those of
// Instrument and TarqSettings, and 7 for a text without any key of its kind: a bank where an
// instrument is wanted, an empty file, no text at all (see load_error.h).

#pragma once

#include <string>
#include <string_view>

#include "instrument/instrument.h"
#include "instrument/settings.h"

namespace tarquil {

// Every controller that picks one of a list gets a byte within it.
void clamp_choices(Instrument& instrument);

int load_bank_checked(TarqSettings& bank, const std::string& path, LoadReport* report = nullptr);
int load_bank_checked_from_string(TarqSettings& bank, std::string_view text,
                                  LoadReport* report = nullptr);

// `path` becomes the instrument's file name.
int load_instrument_checked(Instrument& instrument, const std::string& path,
                            LoadReport* report = nullptr);
int load_instrument_checked_from_string(Instrument& instrument, std::string_view text,
                                        LoadReport* report = nullptr);

} // namespace tarquil
