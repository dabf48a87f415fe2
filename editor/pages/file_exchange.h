// Instruments and banks to and from files that the user chooses.

#pragma once

#include "editor/kit/ui_host.h"

namespace tarquil {

// A file that is of the other kind says so and can be loaded as what it is.
void import_instrument(UiHost& host, unsigned slot);
void import_bank(UiHost& host);

// One that is dropped onto a channel: an instrument is what that plays from now on, of a bank it is
// asked what to do with it.
void load_dropped_file(UiHost& host, const std::string& path, unsigned channel);

void export_instrument(UiHost& host, unsigned slot);
void export_bank(UiHost& host);

} // namespace tarquil
