// Colours on a picture in memory, in pixels: boxes, and all else through masks.

#pragma once

#include <cairo.h>
#include <pixman.h>

#include <cstdint>
#include <memory>
#include <vector>

#include "editor/kit/mask.h"

namespace tarquil {

// 0xRRGGBB, and 1 for opaque.
struct Paint {
    uint32_t rgb = 0;
    double alpha = 1.0;

    bool operator==(const Paint&) const = default;
};

// Pixels from left and top on, up to right and bottom.
using PixelBox = pixman_box32_t;

class Pixels {
  public:
    // An image of CAIRO_FORMAT_RGB24, which outlives the object and is drawn to by nothing else.
    explicit Pixels(cairo_surface_t* image);
    Pixels(const Pixels&) = delete;
    Pixels& operator=(const Pixels&) = delete;
    ~Pixels();

    // Edges between pixels cover these in part.
    void fill(double left, double top, double right, double bottom, const Paint& paint);
    void fill(const PixelBox& box, const Paint& paint);
    // An opaque colour but where `covered` lie.
    void fill_around(const PixelBox& box, const std::vector<PixelBox>& covered, uint32_t rgb);
    // Its first pixel goes to that place.
    void fill(const Mask& mask, int left, int top, const Paint& paint);

    // To the boxes, within those of before, until the next unclip.
    void clip(const std::vector<PixelBox>& boxes);
    void unclip();

    // False for a box that is clipped away.
    [[nodiscard]] bool shows(const PixelBox& box) const;
    // All of them, whatever is clipped.
    [[nodiscard]] PixelBox bounds() const;

  private:
    struct Unref {
        void operator()(pixman_image_t* image) const { pixman_image_unref(image); }
    };
    using Image = std::unique_ptr<pixman_image_t, Unref>;

    void use_clip();

    cairo_surface_t* const target;
    Image pixels; // null for a surface without any
    std::vector<pixman_region32_t> clips;
    // of the last mask
    Paint inked;
    Image ink;
};

} // namespace tarquil
