// One axis of a plot: its range, where a value lies on it, and its ticks.

#pragma once

#include <string>
#include <vector>

namespace tarquil {

struct AxisTick {
    double value = 0.0;
    std::string label; // empty: a grid line only
};

class PlotAxis {
  public:
    // Evenly spaced, `minimum` < `maximum`.  `step` from tick to tick, 0: chosen by the range.
    static PlotAxis linear(std::string title, double minimum, double maximum, double step = 0.0);
    // Spaced by ratio, 0 < `minimum` < `maximum`.
    static PlotAxis logarithmic(std::string title, double minimum, double maximum);

    [[nodiscard]] const std::string& get_title() const { return title; }
    [[nodiscard]] double get_minimum() const { return minimum; }
    [[nodiscard]] double get_maximum() const { return maximum; }

    // 0 at the minimum, 1 at the maximum; values outside the range lie outside 0..1.
    [[nodiscard]] double position(double value) const;

    // From the minimum up.  Linear axes without a step of their own are divided by 1, 2 or 5 times
    // a power of ten into at most 11 steps; logarithmic ones have every 1..9 times a power of ten,
    // labels at 1, 2 and 5.
    [[nodiscard]] std::vector<AxisTick> ticks() const;

  private:
    PlotAxis(std::string axis_title, bool log_scale, double axis_minimum, double axis_maximum);

    [[nodiscard]] std::vector<AxisTick> linear_ticks() const;
    [[nodiscard]] std::vector<AxisTick> logarithmic_ticks() const;

    std::string title;
    bool is_logarithmic = false;
    double minimum = 0.0;
    double maximum = 1.0;
    double fixed_step = 0.0; // 0: chosen by the range
};

// At most two digits after the point, thousands as "k": "440", "1.5k".
std::string axis_number(double value);

} // namespace tarquil
