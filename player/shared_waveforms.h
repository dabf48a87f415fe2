// The wavetables that all players of the process read.

#pragma once

#include <string>

#include "softsynth/wavetables/waveform.h"

namespace tarquil {

// Built, or read from the user's cache, by the first call; any thread may call this, the audio
// thread only after another one has.
const WaveformStore& shared_waveforms();

// $XDG_CACHE_HOME/tarquil, else ~/.cache/tarquil; empty without either.
std::string waveform_cache_folder();

} // namespace tarquil
