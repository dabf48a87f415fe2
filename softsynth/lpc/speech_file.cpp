// Speech as the bytes of a file.

#include "softsynth/lpc/speech_file.h"

#include <algorithm>

#include "common/assertion.h"

namespace tarquil {

namespace {

constexpr std::string_view MAGIC = "TQLP";
constexpr uint8_t VERSION = 1;
constexpr size_t VERSION_AT = 4;
constexpr size_t WARPING_AT = 5;
constexpr size_t BAND_LIMIT_AT = 6;
constexpr size_t COUNT_AT = 7;
constexpr size_t COUNT_BYTES = 4;
constexpr size_t HEADER_BYTES = COUNT_AT + COUNT_BYTES;

SpeechFrame read_frame(std::string_view bytes) {
    SpeechFrameBytes frame{};
    std::copy(bytes.begin(), bytes.end(), frame.begin());
    return unpack_frame(frame);
}

} // namespace

SpeechFileError read_speech(std::string_view bytes, Speech& speech) {
    if (!bytes.starts_with(MAGIC))
        return SpeechFileError::NOT_SPEECH;
    if (bytes.size() < HEADER_BYTES)
        return SpeechFileError::CUT;
    if (uint8_t(bytes[VERSION_AT]) != VERSION)
        return SpeechFileError::VERSION;
    size_t num_frames = 0;
    for (size_t i = COUNT_BYTES; i-- > 0;)
        num_frames = num_frames << 8U | uint8_t(bytes[COUNT_AT + i]);
    if (num_frames > MAX_SPEECH_FRAMES)
        return SpeechFileError::TOO_LONG;
    const size_t length = HEADER_BYTES + num_frames * SPEECH_FRAME_BYTES;
    if (bytes.size() != length)
        return bytes.size() < length ? SpeechFileError::CUT : SpeechFileError::TRAILING;
    speech.warping_256ths = uint8_t(bytes[WARPING_AT]);
    speech.band_limit_100hz = uint8_t(bytes[BAND_LIMIT_AT]);
    speech.frames.clear();
    speech.frames.reserve(num_frames);
    for (size_t i = HEADER_BYTES; i < length; i += SPEECH_FRAME_BYTES)
        speech.frames.push_back(read_frame(bytes.substr(i, SPEECH_FRAME_BYTES)));
    return SpeechFileError::NONE;
}

std::string write_speech(const Speech& speech) {
    TARQ_ASSERT(speech.frames.size() <= MAX_SPEECH_FRAMES);
    std::string bytes(MAGIC);
    bytes += char(VERSION);
    bytes += char(speech.warping_256ths);
    bytes += char(speech.band_limit_100hz);
    for (size_t i = 0; i < COUNT_BYTES; i++)
        bytes += char(speech.frames.size() >> (8 * i) & 0xFFU);
    for (const SpeechFrame& frame : speech.frames)
        for (const uint8_t byte : pack_frame(frame))
            bytes += char(byte);
    return bytes;
}

const char* explain(SpeechFileError error) {
    switch (error) {
    case SpeechFileError::NONE:
        return "Success";
    case SpeechFileError::NOT_SPEECH:
        return "not a speech file; tarquil speech encode makes one of a recording";
    case SpeechFileError::VERSION:
        return "made by a later version of this program";
    case SpeechFileError::CUT:
        return "ends before its last frame";
    case SpeechFileError::TRAILING:
        return "goes on after its last frame";
    case SpeechFileError::TOO_LONG:
        return "longer than ten minutes";
    }
    return "";
}

} // namespace tarquil
