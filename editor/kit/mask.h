// How much of each pixel of a box something covers.

#pragma once

#include <cairo.h>
#include <pixman.h>

#include <functional>
#include <memory>

namespace tarquil {

class Mask {
  public:
    // `draw` paints what covers with cairo's own source, black; in pixels.
    Mask(int width, int height, const std::function<void(cairo_t*)>& draw);

    [[nodiscard]] pixman_image_t* image() const { return coverage.get(); }
    [[nodiscard]] int width() const { return pixman_image_get_width(coverage.get()); }
    [[nodiscard]] int height() const { return pixman_image_get_height(coverage.get()); }

  private:
    struct Unref {
        void operator()(pixman_image_t* image) const { pixman_image_unref(image); }
    };
    std::unique_ptr<pixman_image_t, Unref> coverage;
};

} // namespace tarquil
