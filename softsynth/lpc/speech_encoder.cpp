// A recording turned into frames.

#include "softsynth/lpc/speech_encoder.h"

#include <algorithm>
#include <cmath>

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

// Of the prediction that the search for lines starts from.
constexpr double PEAK_WIDTH = 0.01; // of pi
constexpr double NOISE_FLOOR = 1e-4;

// Of a recording in which nobody speaks.
constexpr double ANY_PITCH = 110.0; // Hz

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

// A recording that is cut off at its ends clicks there; if it is long enough they do not count.
uint8_t band_limit_of(std::span<const float> samples, size_t num_frames) {
    const size_t skipped = num_frames > 4 ? 1 : 0;
    PowerSpectrum sum{};
    for (size_t i = skipped; i + skipped < num_frames; i++) {
        const PowerSpectrum spectrum = power_spectrum(samples, i);
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
    const auto is_voiced = [](double pitch) { return pitch > 0.0; };
    auto voiced = std::find_if(pitches.begin(), pitches.end(), is_voiced);
    std::fill(pitches.begin(), voiced, voiced == pitches.end() ? ANY_PITCH : *voiced);
    while (voiced != pitches.end()) {
        const auto gap = voiced + 1;
        const auto next = std::find_if(gap, pitches.end(), is_voiced);
        const double ratio = next == pitches.end() ? 1.0 : *next / *voiced;
        for (auto i = gap; i != next; ++i)
            *i = *voiced * std::pow(ratio, double(i - voiced) / double(next - voiced));
        voiced = next;
    }
}

std::vector<float> speak(const Speech& speech) {
    SpeechPlayer player(speech, {});
    std::vector<float> samples(speech_length(speech, 1.0));
    player.render(nullptr, samples.data(), uint32_t(samples.size()));
    return samples;
}

// How far the levels may be corrected, in dB.
constexpr double MAX_CORRECTION = 6.0;

// The player's pulses meet the filter between its resonances or on them, and the level moves within
// a frame; what that does to the loudness is measured and taken out.
void correct_levels(Speech& speech, const EnvelopeFinder& finder,
                    std::span<const Envelope> envelopes) {
    const std::vector<float> spoken = speak(speech);
    for (size_t i = 0; i < speech.frames.size(); i++) {
        SpeechFrame& frame = speech.frames[i];
        const Envelope envelope =
            finder.find(power_spectrum(spoken, i), pitch_hz(frame.pitch * 256U));
        double error_db = 0.0;
        for (size_t point = 0; point < finder.get_num_points(); point++)
            error_db += 10.0 * std::log10(envelopes[i][point] / envelope[point]);
        error_db =
            std::clamp(error_db / double(finder.get_num_points()), -MAX_CORRECTION, MAX_CORRECTION);
        const double level = double(frame.level) + std::round(error_db / LEVEL_STEP_DB);
        if (frame.level > 0)
            frame.level = uint8_t(std::clamp(level, 1.0, 255.0));
    }
}

// The emphasised sound's power around a place, in dB, under a triangle of 9 ms.
class ShortPower {
  public:
    explicit ShortPower(std::span<const float> samples) {
        float before = 0.0F;
        for (const float sample : samples) {
            emphasised.push_back(sample - EMPHASIS * before);
            before = sample;
        }
    }
    [[nodiscard]] double around(size_t centre) const {
        constexpr size_t REACH = 200; // samples
        const size_t first = centre - std::min(centre, REACH);
        const size_t last = std::min(centre + REACH, emphasised.size());
        double power = 1e-11;
        for (size_t i = first; i < last; i++) {
            const double distance = std::fabs(double(i) - double(centre)) / double(REACH);
            power += (1.0 - distance) * double(emphasised[i]) * double(emphasised[i]) / REACH;
        }
        return 10.0 * std::log10(power);
    }

  private:
    std::vector<float> emphasised;
};

// Bends the way from each level to the next as far as the recording is louder there than the frames
// are when they go straight.
void bend_levels(Speech& speech, std::span<const float> samples) {
    const ShortPower recorded(samples);
    const ShortPower spoken(speak(speech));
    for (size_t i = 0; i + 1 < speech.frames.size(); i++) {
        const size_t place = (i + 1) * SPEECH_FRAME_SAMPLES;
        const double error_db = recorded.around(place) - spoken.around(place);
        const double bend = std::round(error_db / (LEVELS_A_BEND * LEVEL_STEP_DB));
        speech.frames[i].bend = int8_t(std::clamp(bend, double(MIN_BEND), double(MAX_BEND)));
    }
}

} // namespace

Speech encode_speech(std::span<const float> samples, uint8_t warping_256ths) {
    const size_t longest = MAX_SPEECH_FRAMES * SPEECH_FRAME_SAMPLES;
    const std::vector<float> cleaned = clean(samples.first(std::min(samples.size(), longest)));
    std::vector<double> pitches = track_pitch(cleaned);
    const std::vector<uint8_t> voicing = find_voicing(cleaned, pitches);
    fill_pitches(pitches);
    Speech speech{warping_256ths, band_limit_of(cleaned, pitches.size()),
                  std::vector<SpeechFrame>(pitches.size())};
    const EnvelopeFinder finder(speech.warping(), speech.band_limit_hz());
    std::vector<Envelope> envelopes;
    std::array<uint8_t, LPC_ORDER> lines = flat_lines();
    for (size_t i = 0; i < speech.frames.size(); i++) {
        envelopes.push_back(finder.find(power_spectrum(cleaned, i), pitches[i]));
        lines = predicted_lines(envelopes.back()).value_or(lines);
        const Fit fit = refine_lines(lines, envelopes.back(), finder.get_num_points());
        lines = fit.lines;
        speech.frames[i] = {lines, nearest_level(fit.amplitude), nearest_pitch(pitches[i]),
                            voicing[i], 0};
    }
    correct_levels(speech, finder, envelopes);
    bend_levels(speech, cleaned);
    correct_levels(speech, finder, envelopes);
    return speech;
}

} // namespace tarquil
