// What a speech file holds, in numbers.

#include "tools/speech/speech_summary.h"

#include <algorithm>
#include <cmath>

#include "common/number_text.h"
#include "softsynth/lpc/speech_formants.h"
#include "softsynth/parameters/constants.h"

namespace tarquil {

namespace {

double frame_pitch(const SpeechFrame& frame) {
    return pitch_hz(frame.pitch * 256U);
}

std::string level_text(const SpeechFrame& frame) {
    if (frame.level == 0)
        return "silent";
    return fixed_number(20.0 * std::log10(level_amplitude(frame.level * 256U)), 1) + " dB";
}

// The middle and the ends of the voiced frames' pitches.
std::string pitch_range(const Speech& speech) {
    std::vector<double> pitches;
    for (const SpeechFrame& frame : speech.frames)
        if (frame.voicing > 0)
            pitches.push_back(frame_pitch(frame));
    if (pitches.empty())
        return "no voice";
    std::sort(pitches.begin(), pitches.end());
    const auto text = [&](size_t index) { return fixed_number(pitches[index], 0); };
    return fixed_number(100.0 * double(pitches.size()) / double(speech.frames.size()), 0) +
           " % voiced, pitch " + text(0) + " to " + text(pitches.size() - 1) + " Hz, median " +
           text(pitches.size() / 2) + " Hz";
}

std::string band_text(const Speech& speech) {
    return speech.band_limit_hz() >= 20000.0
               ? "whole"
               : "up to " + fixed_number(speech.band_limit_hz() / 1000.0, 1) + " kHz";
}

} // namespace

std::string speech_summary(const std::string& path, const Speech& speech) {
    const size_t count = speech.frames.size();
    std::string text = path + ": " + std::to_string(count) + " frames, " +
                       fixed_number(double(count) * SPEECH_FRAME_SECONDS, 2) + " s, " +
                       std::to_string(count * SPEECH_FRAME_BYTES) + " bytes of frames\n";
    text += "spectrum " + band_text(speech) + ", warping " + fixed_number(speech.warping(), 3) +
            "\n" + pitch_range(speech) + "\n";
    return text;
}

std::string speech_table(const Speech& speech) {
    std::string text = "time\tlevel\tpitch\tvoiced up to\tformants\n";
    for (size_t i = 0; i < speech.frames.size(); i++) {
        const SpeechFrame& frame = speech.frames[i];
        text +=
            fixed_number((double(i) + 0.5) * SPEECH_FRAME_SECONDS, 2) + " s\t" + level_text(frame);
        text += frame.voicing == 0 ? "\t-\t-\t"
                                   : "\t" + fixed_number(frame_pitch(frame), 0) + " Hz\t" +
                                         fixed_number(voicing_limit_hz(frame.voicing), 0) + " Hz\t";
        std::string separator;
        for (const double hz : find_formants(frame, speech.warping(), speech.band_limit_hz())) {
            text += separator + fixed_number(hz, 0);
            separator = " ";
        }
        text += "\n";
    }
    return text;
}

} // namespace tarquil
