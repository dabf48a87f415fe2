// An image in memory.

#include "editor/pictures/picture.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace tarquil {

namespace {

// Parts of the picture are compared by themselves, so that a missing knob counts.
constexpr int TILE = 16; // pixels

constexpr int NUM_CHANNELS_OF_COLOR = 3;

} // namespace

Picture::Picture(cairo_surface_t* taken) : surface(taken), cr(cairo_create(taken)) {}

Picture::Picture(int width, int height)
    : Picture(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height)) {}

Picture Picture::load(const std::string& path) {
    cairo_surface_t* read = cairo_image_surface_create_from_png(path.c_str());
    if (cairo_surface_status(read) == CAIRO_STATUS_SUCCESS)
        return Picture(read);
    cairo_surface_destroy(read);
    return {0, 0};
}

bool Picture::save(const std::string& path) const {
    cairo_surface_flush(surface.get());
    return cairo_surface_write_to_png(surface.get(), path.c_str()) == CAIRO_STATUS_SUCCESS;
}

int Picture::channel(int x, int y, int index) const {
    const unsigned char* data = cairo_image_surface_get_data(surface.get());
    return data[y * cairo_image_surface_get_stride(surface.get()) + 4 * x + index];
}

Picture Picture::halved() const {
    cairo_surface_flush(surface.get());
    Picture half(width() / 2, height() / 2);
    cairo_surface_flush(half.surface.get());
    unsigned char* data = cairo_image_surface_get_data(half.surface.get());
    const int stride = cairo_image_surface_get_stride(half.surface.get());
    for (int y = 0; y < half.height(); y++) {
        for (int x = 0; x < half.width(); x++) {
            uint32_t pixel = 0;
            for (int i = 0; i < NUM_CHANNELS_OF_COLOR; i++) {
                const int sum = channel(2 * x, 2 * y, i) + channel(2 * x + 1, 2 * y, i) +
                                channel(2 * x, 2 * y + 1, i) + channel(2 * x + 1, 2 * y + 1, i);
                pixel |= uint32_t((sum + 2) / 4) << (8 * i);
            }
            std::memcpy(data + y * stride + 4 * x, &pixel, sizeof(pixel));
        }
    }
    cairo_surface_mark_dirty(half.surface.get());
    return half;
}

std::string Picture::compare(const Picture& other, int max_tile_mean) const {
    if (width() != other.width() || height() != other.height())
        return other.width() == 0 ? "there is no stored picture" : "the size differs";
    cairo_surface_flush(surface.get());
    for (int top = 0; top < height(); top += TILE) {
        for (int left = 0; left < width(); left += TILE) {
            int sum = 0;
            int count = 0;
            for (int y = top; y < std::min(top + TILE, height()); y++) {
                for (int x = left; x < std::min(left + TILE, width()); x++) {
                    for (int i = 0; i < NUM_CHANNELS_OF_COLOR; i++) {
                        sum += std::abs(channel(x, y, i) - other.channel(x, y, i));
                        count++;
                    }
                }
            }
            if (sum > max_tile_mean * count)
                return "differs at " + std::to_string(2 * left) + ", " + std::to_string(2 * top);
        }
    }
    return "";
}

} // namespace tarquil
