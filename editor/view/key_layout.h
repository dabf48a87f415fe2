// Where the keys of a piano lie: seven octaves and one more key, of all that MIDI has.

#pragma once

#include <optional>

#include "editor/kit/geometry.h"

namespace tarquil {

class KeyLayout {
  public:
    explicit KeyLayout(const Rect& keys_area) : area(keys_area) {}

    static constexpr int NUM_WHITE_KEYS = 50;
    static constexpr int NUM_KEYS = 128;

    // The lowest key shown, a white one: octaves from C on, at the top as far as there are keys.
    [[nodiscard]] int first() const { return first_key; }
    [[nodiscard]] int last() const;
    void scroll(int octaves);

    static bool is_black(int key);

    // Of a key from first to last.
    [[nodiscard]] Rect area_of(int key) const;
    [[nodiscard]] std::optional<int> key_at(Point point) const;
    // As hard as the point is low on the key: 1..127.
    [[nodiscard]] unsigned velocity_at(int key, Point point) const;

  private:
    [[nodiscard]] double white_width() const { return area.w / NUM_WHITE_KEYS; }

    const Rect area;
    int first_key = 24; // C1: the seventh octave ends with a piano's highest key
};

} // namespace tarquil
