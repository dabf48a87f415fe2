// A shape within a box of pixels: what a mask is made of, whole and exact, so that it serves as the
// mask's key.

#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "editor/kit/mask.h"

namespace tarquil {

enum class Outline : int32_t {
    ROUNDED, // left, top, width, height, radius
    ARC,     // x, y, radius, from, to
    LINES,   // x and y of each point
    POLYGON, // the same, closed
    CURVE,   // x and y of both ends
    BOXES,   // left, top, width, height of each
};

class Shape {
  public:
    // What is kept of it, in turn: 1/256 of a pixel as cairo rounds them.
    using Key = std::vector<int32_t>;

    struct Style {
        double line_width = 0.0; // filled for 0
        bool is_fine = false;    // 256 shades rather than 16, in twice the time
    };

    // In a box of that size.  The memory is used again.
    void begin(Outline outline, int width, int height, const Style& style);
    // Pixels from the box's corner on; angles as ANGLE to the radian.
    void add(double number);
    static constexpr double ANGLE = 256.0;

    [[nodiscard]] const Key& get_key() const { return key; }
    static Mask make_mask(const Key& key);

  private:
    Key key;
};

struct ShapeHash {
    size_t operator()(const Shape::Key& key) const;
};

} // namespace tarquil
