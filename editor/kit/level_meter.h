// How a meter moves: up at once, down slowly, with the highest level held for a while.

#pragma once

#include <array>

namespace tarquil {

class LevelMeter {
  public:
    // `peaks` are the highest linear levels of the last `seconds`.
    void update(const std::array<float, 2>& peaks, double seconds);
    void clear_clip() { clipped = false; }

    // In dB, QUIETEST at least.
    [[nodiscard]] double get_level(unsigned side) const { return levels[side]; }
    [[nodiscard]] double get_hold(unsigned side) const { return holds[side]; }
    // The highest of both sides within the last PEAK_SECONDS, down to -120.
    [[nodiscard]] double get_peak() const { return peak; }
    // The output has reached full scale since the last clear_clip.
    [[nodiscard]] bool is_clipped() const { return clipped; }

    static constexpr double QUIETEST = -60.0;
    static constexpr double PEAK_SECONDS = 3.0;

  private:
    std::array<double, 2> levels = {QUIETEST, QUIETEST};
    std::array<double, 2> holds = {QUIETEST, QUIETEST};
    std::array<double, 2> held_for{}; // seconds
    double peak = -120.0;
    double since_peak = 0.0;
    bool clipped = false;
};

} // namespace tarquil
