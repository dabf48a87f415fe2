// An image in memory: drawn into, stored as PNG, compared.

#pragma once

#include <cairo.h>

#include <memory>
#include <string>

namespace tarquil {

class Picture {
  public:
    Picture(int width, int height);

    // Empty, of size 0, when there is none.
    static Picture load(const std::string& path);

    [[nodiscard]] cairo_t* context() const { return cr.get(); }
    [[nodiscard]] bool save(const std::string& path) const;

    // Half as wide and high, each pixel the mean of four.
    [[nodiscard]] Picture halved() const;

    // Why it is not the same as `other`, empty when no tile's channels differ by more than
    // max_tile_mean (of 255) on average: text may be drawn by another version of the font's
    // library, so single pixels may differ, areas not.
    [[nodiscard]] std::string compare(const Picture& other, int max_tile_mean) const;

  private:
    explicit Picture(cairo_surface_t* taken);

    // A channel (0 blue, 1 green, 2 red) of a pixel.
    [[nodiscard]] int channel(int x, int y, int index) const;
    [[nodiscard]] int width() const { return cairo_image_surface_get_width(surface.get()); }
    [[nodiscard]] int height() const { return cairo_image_surface_get_height(surface.get()); }

    struct Destroy {
        void operator()(cairo_surface_t* s) const { cairo_surface_destroy(s); }
        void operator()(cairo_t* c) const { cairo_destroy(c); }
    };
    std::unique_ptr<cairo_surface_t, Destroy> surface;
    std::unique_ptr<cairo_t, Destroy> cr;
};

} // namespace tarquil
