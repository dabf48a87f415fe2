// Points and rectangles in the editor's own units: pixels at a scale of 100 %.

#pragma once

#include <algorithm>

namespace tarquil {

struct Point {
    double x = 0.0;
    double y = 0.0;
};

struct Rect {
    double x = 0.0;
    double y = 0.0;
    double w = 0.0;
    double h = 0.0;

    [[nodiscard]] double right() const { return x + w; }
    [[nodiscard]] double bottom() const { return y + h; }
    [[nodiscard]] Point center() const { return {x + w / 2, y + h / 2}; }
    [[nodiscard]] bool contains(Point p) const {
        return p.x >= x && p.x < right() && p.y >= y && p.y < bottom();
    }
    [[nodiscard]] bool overlaps(const Rect& other) const {
        return x < other.right() && other.x < right() && y < other.bottom() && other.y < bottom();
    }
    // What lies within the other as well; of no width or height where nothing does.
    [[nodiscard]] Rect within(const Rect& other) const {
        const double left = std::max(x, other.x);
        const double top = std::max(y, other.y);
        return {left, top, std::max(0.0, std::min(right(), other.right()) - left),
                std::max(0.0, std::min(bottom(), other.bottom()) - top)};
    }
    [[nodiscard]] Rect inset(double dx, double dy) const {
        return {x + dx, y + dy, w - 2 * dx, h - 2 * dy};
    }
    [[nodiscard]] Rect inset(double d) const { return inset(d, d); }
    // What is left of it when a piece is cut off, and the piece.
    Rect cut_left(double width) {
        const Rect piece{x, y, width, h};
        x += width;
        w -= width;
        return piece;
    }
    Rect cut_right(double width) {
        w -= width;
        return {x + w, y, width, h};
    }
    Rect cut_top(double height) {
        const Rect piece{x, y, w, height};
        y += height;
        h -= height;
        return piece;
    }
    Rect cut_bottom(double height) {
        h -= height;
        return {x, y + h, w, height};
    }
};

inline Rect square_around(Point center, double reach) {
    return {center.x - reach, center.y - reach, 2 * reach, 2 * reach};
}

} // namespace tarquil
