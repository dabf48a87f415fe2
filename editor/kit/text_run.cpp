// A line of text in pixels.

#include "editor/kit/text_run.h"

#include <cmath>
#include <functional>
#include <memory>
#include <utility>

namespace tarquil {

namespace {

// Beyond what the letters say of themselves: hinting may move their edges.
constexpr int TEXT_MARGIN = 1; // pixels

struct DestroyFont {
    void operator()(cairo_scaled_font_t* font) const { cairo_scaled_font_destroy(font); }
};
using ScaledFont = std::unique_ptr<cairo_scaled_font_t, DestroyFont>;

ScaledFont scaled_font(double size, Weight weight) {
    cairo_font_options_t* options = cairo_font_options_create();
    cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_SLIGHT);
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    cairo_matrix_t size_matrix;
    cairo_matrix_t identity;
    cairo_matrix_init_scale(&size_matrix, size, size);
    cairo_matrix_init_identity(&identity);
    ScaledFont font(
        cairo_scaled_font_create(editor_font(weight), &size_matrix, &identity, options));
    cairo_font_options_destroy(options);
    return font;
}

} // namespace

TextRun::TextRun(Key text_key) : key(std::move(text_key)) {
    cairo_scaled_font_text_extents(scaled_font(key.size, key.weight).get(), key.text.c_str(),
                                   &extents);
}

int TextRun::left() const {
    return int(std::floor(extents.x_bearing)) - TEXT_MARGIN;
}

int TextRun::top() const {
    return int(std::floor(extents.y_bearing)) - TEXT_MARGIN;
}

int TextRun::mask_width() const {
    return int(std::ceil(extents.x_bearing + extents.width)) + TEXT_MARGIN - left();
}

int TextRun::mask_height() const {
    return int(std::ceil(extents.y_bearing + extents.height)) + TEXT_MARGIN - top();
}

const Mask* TextRun::mask() {
    if (extents.width <= 0.0 || extents.height <= 0.0)
        return nullptr;
    if (!drawn)
        drawn.emplace(mask_width(), mask_height(), [this](cairo_t* context) {
            cairo_set_scaled_font(context, scaled_font(key.size, key.weight).get());
            cairo_move_to(context, -left(), -top());
            cairo_show_text(context, key.text.c_str());
        });
    return &*drawn;
}

size_t TextHash::operator()(const TextRun::Key& key) const {
    constexpr size_t MIX = 31;
    return std::hash<std::string>()(key.text) * MIX + std::hash<double>()(key.size) +
           size_t(key.weight);
}

} // namespace tarquil
