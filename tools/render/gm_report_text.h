// What became of a General MIDI song's messages, for people and for scripts.

#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "midi/gm/gm_report.h"

namespace tarquil {

// A line for each kind of outcome, and one for each shortfall.
std::string gm_report_text(const GmReport& report, unsigned most_voices);

// The same: counts by name under "played", "approximated", "ignored" and "shortfalls".
nlohmann::ordered_json gm_report_json(const GmReport& report, unsigned most_voices);

} // namespace tarquil
