// What the scope page shows: the output's last samples and their spectrum with its peaks.

#pragma once

#include <memory>
#include <span>
#include <vector>

#include "editor/model/editor_synth.h"
#include "editor/model/spectrum.h"

namespace tarquil {

class OutputScope {
  public:
    // What the user has chosen.
    ScopeSource source = ScopeSource::WHOLE;
    bool is_paused = false;
    bool holds_peaks = true;
    double shown_ms = 20.0; // at most MAX_MS

    static constexpr double MAX_MS = 100.0;
    static constexpr float LOWEST_DB = -96.0F;
    static constexpr size_t NUM_FRAMES = 8192; // 186 ms
    static constexpr size_t NUM_LEVELS = 480;

    // Keeps the synth's output watched while a page shows it.
    void follow(EditorSynth& synth, bool is_shown);

    // Takes what has been played; true when it looks different.
    bool update(EditorSynth& synth, double seconds);

    void clear_peaks();

    // Changes when something else is to be drawn.
    [[nodiscard]] unsigned num_updates() const { return updates; }

    // As many frames as `shown_ms` asks for, from a rising zero crossing on where there is one.
    [[nodiscard]] std::span<const float> left() const { return shown_part(left_samples); }
    [[nodiscard]] std::span<const float> right() const { return shown_part(right_samples); }
    // That holds the samples, and does not jump from one picture to the next.
    [[nodiscard]] double range() const { return shown_range; }

    // NUM_LEVELS in dB, LOWEST_DB at least; empty before the first update.
    [[nodiscard]] std::span<const float> levels() const { return shown_levels; }
    [[nodiscard]] std::span<const float> peaks() const { return peak_levels; }

  private:
    [[nodiscard]] std::span<const float> shown_part(const std::vector<float>& samples) const;
    [[nodiscard]] size_t shown_frames() const;
    void find_start();
    void find_range(double seconds);
    bool find_levels(double seconds);

    ScopeSource watched = ScopeSource::NOTHING;
    std::unique_ptr<Spectrum> spectrum; // from the first update on
    std::vector<float> left_samples;
    std::vector<float> right_samples;
    size_t start = 0;
    double shown_range = 1.0;
    double since_large = 0.0; // seconds
    std::vector<float> new_levels;
    std::vector<float> shown_levels;
    std::vector<float> peak_levels;
    bool was_silent = false;
    unsigned updates = 0;
};

} // namespace tarquil
