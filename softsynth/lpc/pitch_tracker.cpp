// The melody of a recording.

#include "softsynth/lpc/pitch_tracker.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "common/resample.h"
#include "softsynth/lpc/speech_frame.h"
#include "softsynth/parameters/constants.h"

namespace tarquil {

namespace {

// The search is made on a quarter of the samples.
constexpr long DIVISION = 4;
constexpr double RATE = double(SAMPLE_RATE) / DIVISION; // Hz
// The two half-band filters of the division delay by 23.5 samples at each rate.
constexpr double DELAY = (23.5 + 2 * 23.5) / DIVISION;

constexpr long SHORTEST_LAG = 20; // 551 Hz
constexpr long LONGEST_LAG = 200; // 55 Hz
constexpr long WINDOW = 250;      // 23 ms

// Sound below this power (-66 dB) has no pitch.
constexpr double FLOOR_POWER = 2.5e-7;

constexpr size_t MAX_CANDIDATES = 8;
constexpr double MIN_CORRELATION = 0.3; // of a candidate

// Costs in units of correlation.
constexpr double UNVOICED_COST = 0.52; // voice with a correlation below 0.48 is dearer
constexpr double LONG_LAG_COST = 0.12; // at the longest lag: twice the period correlates as well
constexpr double CHANGE_COST = 0.12;   // between voice and none
constexpr double OCTAVE_COST = 1.2;    // for each octave of a step

struct Candidate {
    double lag = 0.0; // 0: no voice
    double cost = 0.0;
    double path_cost = 0.0;
    size_t before = 0; // which of the frame before the cheapest path comes from
};

using FrameCandidates = std::vector<Candidate>;

FrameCandidates find_candidates(std::span<const float> samples, long centre) {
    std::vector<double> correlations;
    for (long lag = SHORTEST_LAG - 1; lag <= LONGEST_LAG + 1; lag++)
        correlations.push_back(correlation_at_lag(samples, centre, lag, WINDOW, FLOOR_POWER));
    FrameCandidates candidates;
    for (size_t i = 1; i + 1 < correlations.size(); i++) {
        const double left = correlations[i - 1];
        const double peak = correlations[i];
        const double right = correlations[i + 1];
        if (peak < MIN_CORRELATION || peak < left || peak <= right)
            continue;
        // The top of the parabola through three points.
        const double shift = 0.5 * (left - right) / (left - 2.0 * peak + right);
        const double lag = double(SHORTEST_LAG - 1) + double(i) + shift;
        candidates.push_back(
            {lag, 1.0 - peak * (1.0 - LONG_LAG_COST * lag / double(LONGEST_LAG)), 0.0, 0});
    }
    const size_t kept = std::min(candidates.size(), MAX_CANDIDATES);
    std::partial_sort(candidates.begin(), candidates.begin() + long(kept), candidates.end(),
                      [](const Candidate& a, const Candidate& b) { return a.cost < b.cost; });
    candidates.resize(kept);
    candidates.push_back({0.0, UNVOICED_COST, 0.0, 0});
    return candidates;
}

double transition_cost(const Candidate& from, const Candidate& to) {
    if (from.lag == 0.0 || to.lag == 0.0)
        return from.lag == to.lag ? 0.0 : CHANGE_COST;
    return OCTAVE_COST * std::fabs(std::log2(to.lag / from.lag));
}

void extend_paths(const FrameCandidates& before, FrameCandidates& candidates) {
    for (Candidate& to : candidates) {
        double cheapest = std::numeric_limits<double>::max();
        for (size_t i = 0; i < before.size(); i++) {
            const double cost = before[i].path_cost + transition_cost(before[i], to);
            if (cost < cheapest) {
                cheapest = cost;
                to.before = i;
            }
        }
        to.path_cost = cheapest + to.cost;
    }
}

size_t cheapest_end(const FrameCandidates& candidates) {
    return size_t(std::min_element(candidates.begin(), candidates.end(),
                                   [](const Candidate& a, const Candidate& b) {
                                       return a.path_cost < b.path_cost;
                                   }) -
                  candidates.begin());
}

} // namespace

double correlation_at_lag(std::span<const float> samples, long centre, long lag, long length,
                          double floor_power) {
    const long start = centre - (length + lag) / 2;
    const long first = std::max(0L, -start);
    const long last = std::min(length, long(samples.size()) - start - lag);
    double product = 0.0;
    double power = double(length) * floor_power;
    double later_power = power;
    for (long i = first; i < last; i++) {
        const double a = double(samples[size_t(start + i)]);
        const double b = double(samples[size_t(start + i + lag)]);
        product += a * b;
        power += a * a;
        later_power += b * b;
    }
    return product / std::sqrt(power * later_power);
}

std::vector<double> track_pitch(std::span<const float> samples) {
    const size_t num_frames = (samples.size() + SPEECH_FRAME_SAMPLES - 1) / SPEECH_FRAME_SAMPLES;
    std::vector<float> slow(samples.begin(), samples.end());
    resample(slow, float(SAMPLE_RATE), float(RATE));
    std::vector<FrameCandidates> frames;
    for (size_t i = 0; i < num_frames; i++) {
        const double centre = (double(i) + 0.5) * SPEECH_FRAME_SAMPLES / double(DIVISION) + DELAY;
        FrameCandidates candidates = find_candidates(slow, std::lround(centre));
        if (i == 0)
            for (Candidate& candidate : candidates)
                candidate.path_cost = candidate.cost;
        else
            extend_paths(frames.back(), candidates);
        frames.push_back(std::move(candidates));
    }
    std::vector<double> pitches(num_frames);
    size_t chosen = frames.empty() ? 0 : cheapest_end(frames.back());
    for (size_t i = num_frames; i-- > 0;) {
        const Candidate& candidate = frames[i][chosen];
        pitches[i] = candidate.lag > 0.0 ? RATE / candidate.lag : 0.0;
        chosen = candidate.before;
    }
    return pitches;
}

} // namespace tarquil
