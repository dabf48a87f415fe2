// Writing of a plot into a picture file.

#include "tools/plot/plot_file.h"

#include <algorithm>
#include <memory>

#include "common/failure.h"
#include "tools/bank/bank_files.h"
#include "tools/plot/plot_canvas.h"
#include "tools/plot/png_painter.h"
#include "tools/plot/svg_painter.h"
#include "tools/write_result.h"

namespace tarquil {

namespace {

bool has_ending(const std::string& path, std::string_view ending) {
    const auto same = [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a + 32 : a) == b; };
    return path.size() > ending.size() &&
           std::equal(path.end() - long(ending.size()), path.end(), ending.begin(), same);
}

std::unique_ptr<PlotPainter> make_painter(const PictureOptions& options) {
    if (options.path == "-" || has_ending(options.path, ".svg"))
        return std::make_unique<SvgPainter>(options.width, options.height);
    if (has_ending(options.path, ".png"))
        return std::make_unique<PngPainter>(options.width, options.height);
    throw BadInput(options.path + ": a picture's name ends in .svg or .png");
}

} // namespace

void write_picture(const PictureOptions& options, int results, const PictureDrawing& draw) {
    const std::unique_ptr<PlotPainter> painter = make_painter(options);
    draw(*painter);
    const std::string picture = painter->finish();
    if (options.path == "-")
        write_result(results, picture);
    else
        save_file(options.path, picture);
}

void write_plot(const Plot& plot, const PictureOptions& options, int results) {
    write_picture(options, results, [&](PlotPainter& painter) {
        PlotCanvas(painter, options.width, options.height).draw(plot);
    });
}

} // namespace tarquil
