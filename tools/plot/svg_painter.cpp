// Drawing into SVG.

#include "tools/plot/svg_painter.h"

#include "common/number_text.h"

namespace tarquil {

namespace {

std::string number(double value) {
    return trimmed_number(value, 2);
}

std::string attribute(std::string_view name, std::string_view value) {
    std::string text = " ";
    return text.append(name).append("=\"").append(value).append("\"");
}

std::string hex_color(Color color) {
    std::string text = "#000000";
    for (size_t digit = 6; digit >= 1; digit--) {
        text[digit] = "0123456789abcdef"[color % 16];
        color /= 16;
    }
    return text;
}

std::string escaped(std::string_view text) {
    std::string result;
    for (const char c : text) {
        if (c == '&')
            result += "&amp;";
        else if (c == '<')
            result += "&lt;";
        else if (c == '>')
            result += "&gt;";
        else
            result += c;
    }
    return result;
}

} // namespace

SvgPainter::SvgPainter(int width, int height) {
    const std::string w = std::to_string(width);
    const std::string h = std::to_string(height);
    std::string view = "0 0 ";
    view.append(w).append(" ").append(h);
    svg = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\"";
    svg += attribute("width", w) + attribute("height", h) + attribute("viewBox", view);
    svg += attribute("font-family", "DejaVu Sans, Helvetica, Arial, sans-serif") + ">\n";
}

void SvgPainter::rectangle(const Rectangle& area) {
    svg += "<rect" + attribute("x", number(area.left)) + attribute("y", number(area.top)) +
           attribute("width", number(area.width)) + attribute("height", number(area.height));
}

void SvgPainter::fill(const Rectangle& area, Color color) {
    rectangle(area);
    svg += attribute("fill", hex_color(color)) + "/>\n";
}

void SvgPainter::frame(const Rectangle& area, Color color, double line_width) {
    rectangle(area);
    svg += attribute("fill", "none") + attribute("stroke", hex_color(color)) +
           attribute("stroke-width", number(line_width)) + "/>\n";
}

void SvgPainter::line(const std::vector<PlotPoint>& points, Color color, double line_width) {
    std::string coordinates;
    for (const PlotPoint& point : points) {
        if (!coordinates.empty())
            coordinates += ' ';
        coordinates += number(point.x) + "," + number(point.y);
    }
    svg += "<polyline" + attribute("fill", "none") + attribute("stroke", hex_color(color)) +
           attribute("stroke-width", number(line_width)) + attribute("stroke-linejoin", "round") +
           attribute("points", coordinates) + "/>\n";
}

void SvgPainter::begin_clip(const Rectangle& area) {
    const std::string name = "clip" + std::to_string(num_clips++);
    svg += "<clipPath" + attribute("id", name) + ">";
    rectangle(area);
    svg += "/></clipPath>\n<g" + attribute("clip-path", "url(#" + name + ")") + ">\n";
}

void SvgPainter::end_clip() {
    svg += "</g>\n";
}

void SvgPainter::text(std::string_view text, double x, double y, const TextStyle& style) {
    svg += "<text" + attribute("x", number(x)) + attribute("y", number(y)) +
           attribute("font-size", number(style.size)) + attribute("fill", hex_color(style.color));
    if (style.align == TextAlign::MIDDLE)
        svg += attribute("text-anchor", "middle");
    if (style.align == TextAlign::END)
        svg += attribute("text-anchor", "end");
    if (style.is_bold)
        svg += attribute("font-weight", "bold");
    if (style.is_upright)
        svg += attribute("transform", "rotate(-90 " + number(x) + " " + number(y) + ")");
    svg += ">" + escaped(text) + "</text>\n";
}

std::string SvgPainter::finish() {
    return svg + "</svg>\n";
}

} // namespace tarquil
