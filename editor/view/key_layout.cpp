// Where the keys of a piano lie.

#include "editor/view/key_layout.h"

#include <algorithm>
#include <cmath>

namespace tarquil {

namespace {

constexpr int SEMITONES = 12; // an octave's
constexpr int WHITES = 7;

// Of the white keys, or of the one below a black key, within the octave.
constexpr int WHITE_PLACE[SEMITONES] = {0, 0, 1, 1, 2, 3, 3, 4, 4, 5, 5, 6};
constexpr int WHITE_KEYS[WHITES] = {0, 2, 4, 5, 7, 9, 11};

constexpr double BLACK_WIDTH = 0.62; // of a white key's
constexpr double BLACK_HEIGHT = 0.62;

int white_number(int key) {
    return key / SEMITONES * WHITES + WHITE_PLACE[key % SEMITONES];
}

int white_key(int number) {
    return number / WHITES * SEMITONES + WHITE_KEYS[number % WHITES];
}

} // namespace

bool KeyLayout::is_black(int key) {
    return WHITE_KEYS[WHITE_PLACE[key % SEMITONES]] != key % SEMITONES;
}

int KeyLayout::last() const {
    return white_key(white_number(first_key) + NUM_WHITE_KEYS - 1);
}

void KeyLayout::scroll(int octaves) {
    constexpr int HIGHEST_FIRST = 67 - 24; // G2: the last key is MIDI's
    const int octave = first_key / SEMITONES + (first_key % SEMITONES != 0 && octaves < 0 ? 1 : 0);
    first_key = std::clamp((octave + octaves) * SEMITONES, 0, HIGHEST_FIRST);
}

Rect KeyLayout::area_of(int key) const {
    const double width = white_width();
    const double x = area.x + (white_number(key) - white_number(first_key)) * width;
    if (!is_black(key))
        return {x, area.y, width, area.h};
    const double black = width * BLACK_WIDTH;
    return {x + width - black / 2, area.y, black, area.h * BLACK_HEIGHT};
}

std::optional<int> KeyLayout::key_at(Point point) const {
    if (!area.contains(point))
        return std::nullopt;
    const int number =
        white_number(first_key) +
        std::min(int(std::floor((point.x - area.x) / white_width())), NUM_WHITE_KEYS - 1);
    const int white = white_key(number);
    for (const int black : {white - 1, white + 1}) {
        if (black > first_key && black < last() && is_black(black) &&
            area_of(black).contains(point))
            return black;
    }
    return white;
}

unsigned KeyLayout::velocity_at(int key, Point point) const {
    const Rect of_key = area_of(key);
    const double depth = std::clamp((point.y - of_key.y) / of_key.h, 0.0, 1.0);
    return unsigned(std::lround(1.0 + depth * 126.0));
}

} // namespace tarquil
