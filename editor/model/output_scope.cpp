// What the scope page shows.

#include "editor/model/output_scope.h"

#include <algorithm>
#include <cmath>

namespace tarquil {

void OutputScope::follow(EditorSynth& synth, bool is_shown) {
    const ScopeSource wanted = is_shown ? source : ScopeSource::NOTHING;
    if (wanted != watched)
        synth.watch_output(wanted);
    watched = wanted;
}

bool OutputScope::update(EditorSynth& synth, double seconds) {
    if (is_paused)
        return false;
    if (spectrum == nullptr) {
        spectrum = std::make_unique<Spectrum>(unsigned(NUM_FRAMES));
        left_samples.resize(NUM_FRAMES);
        right_samples.resize(NUM_FRAMES);
        new_levels.resize(NUM_LEVELS);
        shown_levels.assign(NUM_LEVELS, LOWEST_DB);
        clear_peaks();
    }
    if (!synth.read_output(left_samples, right_samples))
        return false;
    const auto is_zero = [](float sample) { return sample == 0.0F; };
    const bool is_silent = std::all_of(left_samples.begin(), left_samples.end(), is_zero) &&
                           std::all_of(right_samples.begin(), right_samples.end(), is_zero);
    const bool is_still = is_silent && was_silent;
    was_silent = is_silent;
    if (!is_still) {
        find_start();
        find_range(seconds);
    }
    const bool is_new = find_levels(seconds) || !is_still;
    updates += unsigned(is_new);
    return is_new;
}

void OutputScope::clear_peaks() {
    peak_levels.assign(NUM_LEVELS, LOWEST_DB);
}

size_t OutputScope::shown_frames() const {
    return size_t(std::lround(std::min(shown_ms, MAX_MS) * SAMPLE_RATE / 1000.0));
}

std::span<const float> OutputScope::shown_part(const std::vector<float>& samples) const {
    if (samples.empty())
        return {};
    return std::span(samples).subspan(std::min(start, samples.size() - shown_frames()),
                                      shown_frames());
}

// The latest crossing that leaves enough frames behind it, so that a steady tone stands still.
void OutputScope::find_start() {
    const auto sum = [this](size_t i) { return left_samples[i] + right_samples[i]; };
    const size_t last = NUM_FRAMES - shown_frames();
    start = last;
    for (size_t i = last; i > 0; i--) {
        if (sum(i - 1) < 0.0F && sum(i) >= 0.0F) {
            start = i;
            return;
        }
    }
}

void OutputScope::find_range(double seconds) {
    constexpr double SECONDS_TO_SHRINK = 2.0;
    double highest = 0.0;
    for (const auto& side : {left(), right()}) {
        for (const float sample : side)
            highest = std::max(highest, double(std::fabs(sample)));
    }
    double wanted = 1.0;
    while (wanted > 0.02 && highest < 0.45 * wanted)
        wanted /= 2.0;
    since_large = wanted < shown_range ? since_large + seconds : 0.0;
    if (wanted > shown_range || since_large > SECONDS_TO_SHRINK) {
        shown_range = wanted;
        since_large = 0.0;
    }
}

bool OutputScope::find_levels(double seconds) {
    constexpr float FALL = 60.0F; // dB per second
    std::fill(new_levels.begin(), new_levels.end(), LOWEST_DB);
    if (!was_silent) {
        spectrum->raise(left_samples, new_levels);
        spectrum->raise(right_samples, new_levels);
    }
    bool is_new = false;
    for (size_t i = 0; i < NUM_LEVELS; i++) {
        const float before = shown_levels[i];
        shown_levels[i] = std::clamp(before - FALL * float(seconds), new_levels[i],
                                     std::max(before, new_levels[i]));
        peak_levels[i] = std::max(peak_levels[i], shown_levels[i]);
        is_new = is_new || shown_levels[i] != before;
    }
    return is_new;
}

} // namespace tarquil
