// A recording turned into frames.
//
// Not for the audio thread: it allocates, and uses the C library's functions, so that other
// machines may round a byte of a frame otherwise.

#pragma once

#include <span>

#include "softsynth/lpc/speech.h"

namespace tarquil {

// 0.758: the bent axis is as near to the Bark scale as one all-pass brings it at 44,100 Hz (J. O.
// Smith and J. S. Abel, "Bark and ERB bilinear transforms", IEEE Trans. Speech and Audio Processing
// 7 (1999) 697-708).  Words are understood best so, if spectra in Hz are a little nearer with less
// (ARCHITECTURE.md).
inline constexpr uint8_t DEFAULT_SPEECH_WARPING = 194;

// One frame for each SPEECH_FRAME_SAMPLES that `samples` (44100 Hz) begins, and at most
// MAX_SPEECH_FRAMES.  What is not finite counts as silence, what is beyond +-1 as +-1.
Speech encode_speech(std::span<const float> samples,
                     uint8_t warping_256ths = DEFAULT_SPEECH_WARPING);

} // namespace tarquil
