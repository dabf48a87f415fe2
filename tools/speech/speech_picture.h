// A picture of speech: spectrum and formants over time, pitch and level below.

#pragma once

#include <string>

#include "softsynth/lpc/speech.h"
#include "tools/plot/plot_file.h"

namespace tarquil {

void draw_speech(const Speech& speech, const std::string& title, const PictureOptions& options,
                 int results);

} // namespace tarquil
