// What a speech file holds, in numbers.

#pragma once

#include <string>

#include "softsynth/lpc/speech.h"

namespace tarquil {

// A few lines: length, bytes, the filter's axis, how much has voice and how high.
std::string speech_summary(const std::string& path, const Speech& speech);

// A line for each frame: its middle in seconds, level, pitch, voicing limit, formants.
std::string speech_table(const Speech& speech);

} // namespace tarquil
