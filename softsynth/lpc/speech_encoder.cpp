// A recording turned into frames.

#include "softsynth/lpc/speech_encoder.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "softsynth/lpc/band_splitter.h"
#include "softsynth/lpc/exact_math.h"
#include "softsynth/lpc/line_refiner.h"
#include "softsynth/lpc/line_spectrum.h"
#include "softsynth/lpc/linear_prediction.h"
#include "softsynth/lpc/pitch_tracker.h"
#include "softsynth/lpc/spectral_envelope.h"
#include "softsynth/lpc/speech_player.h"
#include "softsynth/lpc/voicing.h"

namespace tarquil {

namespace {

constexpr double LOWEST_FREQUENCY = 50.0; // Hz; what lies below is wind and hum

// Two frames: one and half of each neighbour.
constexpr size_t WINDOW = 2 * SPEECH_FRAME_SAMPLES;

double env(const char* name, double fallback) {
    const char* v = std::getenv(name);
    return v ? std::atof(v) : fallback;
}
const double PEAK_WIDTH = env("PW", 0.01);    // of pi, standard deviation
const double NOISE_FLOOR = env("NF", 1e-4);    // 40 dB below the frame

// Rounds of speaking the frames and correcting their levels.
const int LEVEL_ROUNDS = int(env("LR", 2));
const bool REFINE=env("RF",1)>0;

std::vector<float> clean(std::span<const float> samples) {
    BandSplitter splitter;
    splitter.set_frequency(LOWEST_FREQUENCY);
    std::vector<float> cleaned;
    cleaned.reserve(samples.size());
    for (const float sample : samples)
        cleaned.push_back(
            splitter.high(std::isfinite(sample) ? std::clamp(sample, -1.0F, 1.0F) : 0.0F));
    return cleaned;
}

uint8_t line_of_cosine(double cosine) {
    return uint8_t(std::clamp(std::floor(std::acos(cosine) / PI * 256.0), 0.0, 255.0));
}

PowerSpectrum spectrum_of_frame(std::span<const float> samples, size_t frame) {
    const auto centre = long(frame * SPEECH_FRAME_SAMPLES + SPEECH_FRAME_SAMPLES / 2);
    return power_spectrum(samples, centre, WINDOW);
}

uint8_t band_limit_of(std::span<const float> samples, size_t num_frames) {
    PowerSpectrum sum{};
    for (size_t i = 0; i < num_frames; i++) {
        const PowerSpectrum spectrum = spectrum_of_frame(samples, i);
        for (size_t bin = 0; bin < sum.size(); bin++)
            sum[bin] += spectrum[bin];
    }
    return find_band_limit(sum);
}

// The predictor's lines; none for a spectrum that has none.
std::optional<std::array<uint8_t, LPC_ORDER>> predicted_lines(const Envelope& envelope) {
    std::vector<double> correlation = autocorrelation_of_spectrum(envelope, LPC_ORDER);
    smooth_spectrum(correlation, PEAK_WIDTH, NOISE_FLOOR);
    const Prediction prediction = predict(correlation);
    Predictor predictor{};
    std::copy(prediction.predictor.begin(), prediction.predictor.end(), predictor.begin());
    const std::optional<LineCosines> cosines = lines_of_predictor(predictor);
    if (!cosines)
        return std::nullopt;
    std::array<uint8_t, LPC_ORDER> lines{};
    std::transform(cosines->begin(), cosines->end(), lines.begin(), line_of_cosine);
    separate_lines(lines);
    return lines;
}

// Frames without voice get a pitch on the way between the voices around them.
void fill_pitches(std::vector<double>& pitches) {
    size_t last_voiced = pitches.size();
    for (size_t i = 0; i < pitches.size(); i++) {
        if (pitches[i] == 0.0)
            continue;
        const size_t first = last_voiced == pitches.size() ? 0 : last_voiced + 1;
        for (size_t j = first; j < i; j++) {
            const double start = last_voiced == pitches.size() ? pitches[i] : pitches[last_voiced];
            const double way = double(j + 1 - first) / double(i + 1 - first);
            pitches[j] = start * std::pow(pitches[i] / start, way);
        }
        last_voiced = i;
    }
    const double last = last_voiced == pitches.size() ? 110.0 : pitches[last_voiced];
    for (size_t j = last_voiced == pitches.size() ? 0 : last_voiced + 1; j < pitches.size(); j++)
        pitches[j] = last;
}

std::vector<float> speak(const Speech& speech) {
    SpeechPlayer player(speech, {});
    std::vector<float> samples(speech_length(speech, 1.0));
    player.render(nullptr, samples.data(), uint32_t(samples.size()));
    return samples;
}

// The player's pulses meet the filter between its resonances or on them, and the level moves within
// a frame; what that does to the loudness is measured and taken out.
void correct_levels(Speech& speech, const EnvelopeFinder& finder,
                    std::span<const Envelope> envelopes) {
    const std::vector<float> spoken = speak(speech);
    for (size_t i = 0; i < speech.frames.size(); i++) {
        SpeechFrame& frame = speech.frames[i];
        const Envelope envelope =
            finder.find(spectrum_of_frame(spoken, i), pitch_hz(frame.pitch * 256U));
        double error_db = 0.0;
        for (size_t point = 0; point < finder.get_num_points(); point++)
            error_db += 10.0 * std::log10(envelopes[i][point] / envelope[point]);
        error_db = std::clamp(error_db / double(finder.get_num_points()), -6.0, 6.0);
        if (frame.level > 0)
            frame.level =
                uint8_t(std::clamp(double(frame.level) + std::round(2.0 * error_db), 1.0, 255.0));
    }
}

} // namespace

Speech encode_speech(std::span<const float> samples, const SpeechAnalysis& analysis) {
    const size_t longest = MAX_SPEECH_FRAMES * SPEECH_FRAME_SAMPLES;
    const std::vector<float> cleaned = clean(samples.first(std::min(samples.size(), longest)));
    std::vector<double> pitches = track_pitch(cleaned);
    const std::vector<uint8_t> voicing = find_voicing(cleaned, pitches);
    fill_pitches(pitches);
    Speech speech{analysis.warping_256ths, band_limit_of(cleaned, pitches.size()),
                  std::vector<SpeechFrame>(pitches.size())};
    const EnvelopeFinder finder(speech.warping(), speech.band_limit_hz());
    std::vector<Envelope> envelopes;
    std::array<uint8_t, LPC_ORDER> lines = flat_lines();
    for (size_t i = 0; i < speech.frames.size(); i++) {
        envelopes.push_back(finder.find(spectrum_of_frame(cleaned, i), pitches[i]));
        lines = predicted_lines(envelopes.back()).value_or(lines);
        Fit fit = REFINE ? refine_lines(lines, envelopes.back(), finder.get_num_points()): measure_fit(lines, envelopes.back(), finder.get_num_points());
        lines = fit.lines;
        speech.frames[i] = {lines, nearest_level(fit.amplitude), nearest_pitch(pitches[i]),
                            voicing[i]};
    }
    for (int round = 0; round < LEVEL_ROUNDS; round++)
        correct_levels(speech, finder, envelopes);
    return speech;
}

} // namespace tarquil
