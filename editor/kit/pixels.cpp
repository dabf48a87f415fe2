// Colours on a picture in memory.

#include "editor/kit/pixels.h"

#include <array>
#include <cmath>

namespace tarquil {

namespace {

// Pixels of one axis that are covered alike.
struct CoveredSpan {
    int from = 0;
    int to = 0;
    double coverage = 0.0;
};

// The first pixel, those between and the last.
std::array<CoveredSpan, 3> covered_spans(double from, double to) {
    const int first = int(std::floor(from));
    const int inner_from = int(std::ceil(from));
    const int inner_to = int(std::floor(to));
    if (inner_to < inner_from) // within one
        return {{{first, first + 1, to - from}}};
    return {{{first, inner_from, inner_from - from},
             {inner_from, inner_to, 1.0},
             {inner_to, int(std::ceil(to)), to - inner_to}}};
}

// With the colours multiplied by alpha.
pixman_color_t pixman_color(const Paint& paint) {
    const auto part = [&](unsigned shift) {
        constexpr double FULL = 65535.0;
        return uint16_t(std::lround((paint.rgb >> shift & 0xFFU) / 255.0 * paint.alpha * FULL));
    };
    return {part(16), part(8), part(0), uint16_t(std::lround(paint.alpha * 65535.0))};
}

} // namespace

Pixels::Pixels(cairo_surface_t* image) : target(image) {
    cairo_surface_flush(target);
    auto* const data = reinterpret_cast<uint32_t*>(cairo_image_surface_get_data(target));
    if (data != nullptr)
        pixels.reset(pixman_image_create_bits(
            PIXMAN_x8r8g8b8, cairo_image_surface_get_width(target),
            cairo_image_surface_get_height(target), data, cairo_image_surface_get_stride(target)));
    // It is not checked against the edges otherwise.
    pixman_region32_t all;
    const PixelBox box = bounds();
    pixman_region32_init_rects(&all, &box, 1);
    clips.push_back(all);
    use_clip();
}

Pixels::~Pixels() {
    for (pixman_region32_t& region : clips)
        pixman_region32_fini(&region);
    pixels.reset();
    cairo_surface_mark_dirty(target);
}

PixelBox Pixels::bounds() const {
    return pixels == nullptr ? PixelBox{0, 0, 0, 0}
                             : PixelBox{0, 0, pixman_image_get_width(pixels.get()),
                                        pixman_image_get_height(pixels.get())};
}

void Pixels::use_clip() {
    if (pixels != nullptr)
        pixman_image_set_clip_region32(pixels.get(), &clips.back());
}

void Pixels::clip(const std::vector<PixelBox>& boxes) {
    pixman_region32_t region;
    pixman_region32_init_rects(&region, boxes.data(), int(boxes.size()));
    pixman_region32_intersect(&region, &region, &clips.back());
    clips.push_back(region);
    use_clip();
}

void Pixels::unclip() {
    pixman_region32_fini(&clips.back());
    clips.pop_back();
    use_clip();
}

bool Pixels::shows(const PixelBox& box) const {
    const PixelBox& shown = *pixman_region32_extents(const_cast<pixman_region32_t*>(&clips.back()));
    return box.x1 < shown.x2 && shown.x1 < box.x2 && box.y1 < shown.y2 && shown.y1 < box.y2;
}

void Pixels::fill(const PixelBox& box, const Paint& paint) {
    if (box.x1 >= box.x2 || box.y1 >= box.y2 || !shows(box))
        return;
    const pixman_color_t color = pixman_color(paint);
    pixman_image_fill_boxes(PIXMAN_OP_OVER, pixels.get(), &color, 1, &box);
}

void Pixels::fill(double left, double top, double right, double bottom, const Paint& paint) {
    for (const CoveredSpan& row : covered_spans(top, bottom)) {
        for (const CoveredSpan& column : covered_spans(left, right))
            fill({column.from, row.from, column.to, row.to},
                 {paint.rgb, paint.alpha * row.coverage * column.coverage});
    }
}

void Pixels::fill_around(const PixelBox& box, const std::vector<PixelBox>& covered, uint32_t rgb) {
    pixman_region32_t left;
    pixman_region32_t gone;
    pixman_region32_init_rects(&left, &box, 1);
    pixman_region32_init_rects(&gone, covered.data(), int(covered.size()));
    pixman_region32_subtract(&left, &left, &gone);
    int count = 0;
    const PixelBox* const boxes = pixman_region32_rectangles(&left, &count);
    for (int i = 0; i < count; i++)
        fill(boxes[i], {rgb});
    pixman_region32_fini(&gone);
    pixman_region32_fini(&left);
}

void Pixels::fill(const Mask& mask, int left, int top, const Paint& paint) {
    if (pixels == nullptr)
        return;
    if (ink == nullptr || inked != paint) {
        const pixman_color_t color = pixman_color(paint);
        ink.reset(pixman_image_create_solid_fill(&color));
        inked = paint;
    }
    pixman_image_composite32(PIXMAN_OP_OVER, ink.get(), mask.image(), pixels.get(), 0, 0, 0, 0,
                             left, top, mask.width(), mask.height());
}

} // namespace tarquil
