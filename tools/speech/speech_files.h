// Speech files of the command line.

#pragma once

#include <string>

#include "softsynth/lpc/speech.h"

namespace tarquil {

// The speech at `path` ("-" is standard input).  BadInput when it can not be loaded.
Speech load_speech_file(const std::string& path);

} // namespace tarquil
