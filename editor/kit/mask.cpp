// How much of each pixel of a box something covers.

#include "editor/kit/mask.h"

namespace tarquil {

Mask::Mask(int width, int height, const std::function<void(cairo_t*)>& draw)
    : coverage(pixman_image_create_bits(PIXMAN_a8, width, height, nullptr, 0)) {
    cairo_surface_t* const surface = cairo_image_surface_create_for_data(
        reinterpret_cast<unsigned char*>(pixman_image_get_data(coverage.get())), CAIRO_FORMAT_A8,
        width, height, pixman_image_get_stride(coverage.get()));
    cairo_t* const context = cairo_create(surface);
    draw(context);
    cairo_destroy(context);
    cairo_surface_destroy(surface);
}

} // namespace tarquil
