// A line of text in pixels: how wide it is, and its mask.

#pragma once

#include <cairo.h>

#include <cstddef>
#include <optional>
#include <string>

#include "editor/kit/font.h"
#include "editor/kit/mask.h"

namespace tarquil {

class TextRun {
  public:
    // All that its look depends on.
    struct Key {
        std::string text;  // well-formed UTF-8
        double size = 0.0; // in pixels
        Weight weight = Weight::NORMAL;

        bool operator==(const Key&) const = default;
    };

    explicit TextRun(Key text_key);

    // To where text behind it begins.
    [[nodiscard]] double width() const { return extents.x_advance; }
    // Where the mask's corner lies when the text begins at 0, 0 on its base line.
    [[nodiscard]] int left() const;
    [[nodiscard]] int top() const;
    // Made when it is first wanted; null where there is nothing to see.
    const Mask* mask();
    // At most, of the mask.
    [[nodiscard]] size_t bytes() const { return size_t(mask_width()) * size_t(mask_height()); }

  private:
    [[nodiscard]] int mask_width() const;
    [[nodiscard]] int mask_height() const;

    Key key;
    cairo_text_extents_t extents{};
    std::optional<Mask> drawn;
};

struct TextHash {
    size_t operator()(const TextRun::Key& key) const;
};

} // namespace tarquil
