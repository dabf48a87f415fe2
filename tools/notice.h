// What a command says beside its result: one line each on standard error.

#pragma once

#include <string>

#include "instrument/load_report.h"

namespace tarquil {

void print_notice(const std::string& text);

// What the files that a command has loaded lacked; nothing when they lacked nothing.
void print_load_summary(const LoadReport& report);

} // namespace tarquil
