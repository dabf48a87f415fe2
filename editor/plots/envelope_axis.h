// The time axis of the envelope plots: from the key down on, and from the key up on.

#pragma once

#include <vector>

#include "editor/kit/geometry.h"
#include "editor/plots/plot_frame.h"

namespace tarquil {

// Logarithmic, so that 1 ms and 10 s both can be seen, from the same place for all envelopes; or
// linear up to `longest` seconds.
class EnvelopeAxis {
  public:
    EnvelopeAxis(const Rect& axis_area, bool logarithmic, double longest);

    [[nodiscard]] double x(double seconds) const;
    [[nodiscard]] double seconds(double x_place) const;
    [[nodiscard]] std::vector<GridLine> lines() const; // values are seconds

    [[nodiscard]] const Rect& get_area() const { return area; }

  private:
    Rect area;
    bool is_logarithmic;
    double last;
};

// A round time of 1, 2 or 5 times a power of ten that is at least `seconds`.
double round_time_above(double seconds);
// "5 ms", "1.5 s".
std::string short_time_text(double seconds);
// About eight lines over `seconds`, every other with its time.
std::vector<GridLine> time_lines(double seconds);

} // namespace tarquil
