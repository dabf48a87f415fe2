// Speech spoken into a sound file.

#pragma once

#include <string>

#include "softsynth/lpc/speech_player.h"
#include "tools/audio/audio_format.h"

namespace tarquil {

struct SpeechDecoding {
    SpeechSettings settings;
    std::string carrier_path; // of the voice CARRIER
    AudioRequest audio;
    int standard_output = -1;
};

// Writes a file of one channel at 44100 Hz.  A carrier that is shorter than the words is repeated.
// BadInput for a place that can not be written to and a carrier that can not be read.
void decode_speech(const Speech& speech, const SpeechDecoding& decoding);

} // namespace tarquil
