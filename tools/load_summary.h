// What the files that a command has loaded lacked.

#pragma once

#include "instrument/load_report.h"

namespace tarquil {

// One line on standard error; nothing when they lacked nothing.
void print_load_summary(const LoadReport& report);

} // namespace tarquil
