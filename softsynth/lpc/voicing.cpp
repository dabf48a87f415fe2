// How far up a recording is voiced.

#include "softsynth/lpc/voicing.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "softsynth/lpc/band_splitter.h"
#include "softsynth/lpc/pitch_tracker.h"
#include "softsynth/lpc/speech_frame.h"
#include "softsynth/parameters/constants.h"

namespace tarquil {

namespace {

constexpr long BAND_WINDOW = 882; // samples
constexpr long LAG_SEARCH =
    3; // samples around the period: the pitch moves, and is known as roughly

constexpr double BAND_FLOOR_POWER = 1e-9; // sound below -90 dB does not repeat

// Below this correlation a band counts as noise.
constexpr double VOICED_CORRELATION = 0.5;

using BandCorrelations = std::array<double, MAX_VOICING>;

// The samples between the limits of voicing band - 1 and band.
std::vector<float> filter_band(std::span<const float> samples, unsigned band) {
    BandSplitter below;
    BandSplitter above;
    below.set_frequency(voicing_limit_hz(band));
    if (band > 1)
        above.set_frequency(voicing_limit_hz(band - 1));
    std::vector<float> filtered;
    filtered.reserve(samples.size());
    for (const float sample : samples)
        filtered.push_back(below.low(band > 1 ? above.high(sample) : sample));
    return filtered;
}

double best_correlation(std::span<const float> band, size_t frame, double hz) {
    const auto centre = long(frame * SPEECH_FRAME_SAMPLES + SPEECH_FRAME_SAMPLES / 2);
    const long period = std::lround(SAMPLE_RATE / hz);
    double best = 0.0;
    for (long lag = period - LAG_SEARCH; lag <= period + LAG_SEARCH; lag++)
        best = std::max(best, correlation_at_lag(band, centre, lag, BAND_WINDOW, BAND_FLOOR_POWER));
    return best;
}

// The limit that has most voice below and most noise above.
uint8_t choose_voicing(const BandCorrelations& correlations) {
    double gain = correlations[0] - VOICED_CORRELATION;
    double best_gain = gain;
    unsigned best = 1;
    for (unsigned voicing = 2; voicing <= MAX_VOICING; voicing++) {
        gain += correlations[voicing - 1] - VOICED_CORRELATION;
        if (gain > best_gain) {
            best_gain = gain;
            best = voicing;
        }
    }
    return uint8_t(best);
}

} // namespace

std::vector<uint8_t> find_voicing(std::span<const float> samples, std::span<const double> pitches) {
    std::vector<BandCorrelations> correlations(pitches.size());
    for (unsigned band = 1; band <= MAX_VOICING; band++) {
        const std::vector<float> filtered = filter_band(samples, band);
        for (size_t i = 0; i < pitches.size(); i++)
            if (pitches[i] > 0.0)
                correlations[i][band - 1] = best_correlation(filtered, i, pitches[i]);
    }
    std::vector<uint8_t> voicing(pitches.size());
    for (size_t i = 0; i < pitches.size(); i++)
        voicing[i] = pitches[i] > 0.0 ? choose_voicing(correlations[i]) : uint8_t(0);
    return voicing;
}

} // namespace tarquil
