// Speech files of the command line.

#include "tools/speech/speech_files.h"

#include "common/failure.h"
#include "common/load_string.h"
#include "softsynth/lpc/speech_file.h"

namespace tarquil {

Speech load_speech_file(const std::string& path) {
    std::string bytes;
    if (const int error = load_file_to_string(path == "-" ? "/dev/stdin" : path, bytes))
        throw BadInput(path + ": " + explain_file_error(error));
    Speech speech;
    const SpeechFileError error = read_speech(bytes, speech);
    if (error != SpeechFileError::NONE)
        throw BadInput(path + ": " + explain(error));
    return speech;
}

} // namespace tarquil
