// Speech as the bytes of a file (.tlp).
//
// "TQLP", the version (1), the warping in 1/256, the band limit in 100 Hz, the number of frames (32
// bits, little-endian), then eleven bytes for each frame and nothing else.

#pragma once

#include <string>
#include <string_view>

#include "softsynth/lpc/speech.h"

namespace tarquil {

enum class SpeechFileError {
    NONE,
    NOT_SPEECH, // no such file's first bytes
    VERSION,    // of a later program
    CUT,        // fewer bytes than the header says
    TRAILING,   // more bytes than the header says
    TOO_LONG,   // beyond MAX_SPEECH_FRAMES
};

// Replaces `speech` when there is no error, else leaves it alone.
SpeechFileError read_speech(std::string_view bytes, Speech& speech);

std::string write_speech(const Speech& speech);

// For people: what is wrong, without the file's name.
const char* explain(SpeechFileError error);

} // namespace tarquil
