// Points and rectangles in the editor's own units: pixels at a scale of 100 %.

#pragma once

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

} // namespace tarquil
