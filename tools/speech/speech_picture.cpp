// A picture of speech.

#include "tools/speech/speech_picture.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

#include "common/printable_text.h"
#include "softsynth/lpc/speech_formants.h"
#include "softsynth/parameters/constants.h"
#include "tools/plot/plot_axis.h"

namespace tarquil {

namespace {

// Pixels around and between the areas.
constexpr double MARGIN_LEFT = 76;
constexpr double MARGIN_RIGHT = 24;
constexpr double MARGIN_TOP = 40;
constexpr double MARGIN_BOTTOM = 56;
constexpr double GAP = 14;

// Of the height that is left.
constexpr double SPECTRUM_SHARE = 0.62;
constexpr double PITCH_SHARE = 0.19;

constexpr double TITLE_SIZE = 16;
constexpr double LABEL_SIZE = 11;
constexpr double TITLE_LETTERS = 0.7; // width of a wide letter, relative to its size

// How wide a cell of the spectrum is, and how much the darkest is above the white ones.
constexpr double CELL_PIXELS = 3;
constexpr double SPECTRUM_RANGE_DB = 60;

constexpr double LOWEST_PITCH = 50; // Hz
constexpr double HIGHEST_PITCH = 800;
constexpr double LOWEST_LEVEL = -80; // dB
constexpr double HIGHEST_LEVEL = 0;

// Formants of two frames are one track when they lie within this ratio.
constexpr double TRACK_RATIO = 1.25;

constexpr Color BACKGROUND = 0xFFFFFF;
constexpr Color TEXT_COLOR = 0x222222;
constexpr Color FRAME_COLOR = 0x777777;
constexpr Color GRID_COLOR = 0xDDDDDD;
constexpr Color FORMANT_COLOR = 0xD55E00;
constexpr Color PITCH_COLOR = 0x0072B2;
constexpr Color LEVEL_COLOR = 0x009E73;

Color gray(double darkness) {
    const auto level = Color(std::lround(255.0 * (1.0 - std::clamp(darkness, 0.0, 1.0))));
    return level << 16U | level << 8U | level;
}

class SpeechPicture {
  public:
    SpeechPicture(PlotPainter& plot_painter, const Speech& drawn_speech,
                  const PictureOptions& options)
        : painter(plot_painter), speech(drawn_speech), width(options.width), height(options.height),
          time_axis(PlotAxis::linear("Time (s)", 0.0,
                                     std::max<double>(double(speech.frames.size()), 1.0) *
                                         SPEECH_FRAME_SECONDS)) {}

    void draw(const std::string& title) {
        painter.fill({0, 0, width, height}, BACKGROUND);
        const double room = (width - MARGIN_LEFT) / (TITLE_SIZE * TITLE_LETTERS);
        painter.text(printable_text(title, size_t(room)), MARGIN_LEFT, MARGIN_TOP - 14,
                     {.size = TITLE_SIZE, .color = TEXT_COLOR, .is_bold = true});
        const double used = height - MARGIN_TOP - MARGIN_BOTTOM - 2 * GAP;
        draw_spectrum(next_area(SPECTRUM_SHARE * used));
        draw_pitch(next_area(PITCH_SHARE * used));
        draw_level(next_area((1 - SPECTRUM_SHARE - PITCH_SHARE) * used));
        draw_time();
    }

  private:
    Rectangle next_area(double area_height) {
        const Rectangle area{MARGIN_LEFT, top, width - MARGIN_LEFT - MARGIN_RIGHT, area_height};
        top += area_height + GAP;
        return area;
    }

    [[nodiscard]] double time_x(const Rectangle& area, double frames) const {
        return area.left + time_axis.position(frames * SPEECH_FRAME_SECONDS) * area.width;
    }

    static double value_y(const Rectangle& area, const PlotAxis& axis, double value) {
        return area.top + (1.0 - axis.position(value)) * area.height;
    }

    void draw_axis(const Rectangle& area, const PlotAxis& axis) {
        for (const AxisTick& tick : axis.ticks()) {
            if (tick.label.empty())
                continue;
            const double y = value_y(area, axis, tick.value);
            painter.line({{area.left, y}, {area.left + area.width, y}}, GRID_COLOR, 1);
            painter.text(tick.label, area.left - 8, y + LABEL_SIZE / 3,
                         {.size = LABEL_SIZE, .color = TEXT_COLOR, .align = TextAlign::END});
        }
        painter.text(axis.get_title(), 18, area.top + area.height / 2,
                     {.size = LABEL_SIZE,
                      .color = TEXT_COLOR,
                      .align = TextAlign::MIDDLE,
                      .is_upright = true});
    }

    void draw_frame(const Rectangle& area) { painter.frame(area, FRAME_COLOR, 1); }

    void draw_spectrum(const Rectangle& area) {
        const double highest = std::min(speech.band_limit_hz(), 10000.0);
        const PlotAxis axis = PlotAxis::linear("Frequency (Hz)", 0.0, highest);
        draw_axis(area, axis);
        const auto columns = size_t(std::ceil(area.width / CELL_PIXELS));
        const auto rows = size_t(std::ceil(area.height / CELL_PIXELS));
        const Rectangle cell{0, 0, area.width / double(columns), area.height / double(rows)};
        const double loudest = loudest_density(highest);
        for (size_t column = 0; column < columns && !speech.frames.empty(); column++) {
            const SpeechFrame& frame = speech.frames[column * speech.frames.size() / columns];
            for (size_t row = 0; row < rows; row++) {
                const double hz = highest * (double(row) + 0.5) / double(rows);
                const double density = frame_density_db(frame, speech.warping(), hz);
                const Color color = gray(1.0 - (loudest - density) / SPECTRUM_RANGE_DB);
                if (color != BACKGROUND)
                    painter.fill({area.left + double(column) * cell.width,
                                  area.top + area.height - double(row + 1) * cell.height,
                                  cell.width, cell.height},
                                 color);
            }
        }
        draw_formants(area, axis, highest);
        draw_frame(area);
    }

    [[nodiscard]] double loudest_density(double highest_hz) const {
        constexpr int NUM_PLACES = 50;
        double loudest = -120.0;
        for (const SpeechFrame& frame : speech.frames)
            for (int i = 1; i < NUM_PLACES; i++)
                loudest = std::max(loudest, frame_density_db(frame, speech.warping(),
                                                             highest_hz * i / NUM_PLACES));
        return loudest;
    }

    // A piece of line between two frames for each formant that both have.
    void draw_formants(const Rectangle& area, const PlotAxis& axis, double highest_hz) {
        std::vector<double> before;
        for (size_t i = 0; i < speech.frames.size(); i++) {
            const SpeechFrame& frame = speech.frames[i];
            std::vector<double> formants;
            if (frame.voicing > 0)
                formants = find_formants(frame, speech.warping(), highest_hz);
            for (const double hz : formants) {
                const std::optional<double> from = nearest(before, hz);
                if (!from)
                    continue;
                painter.line({{time_x(area, double(i) - 0.5), value_y(area, axis, *from)},
                              {time_x(area, double(i) + 0.5), value_y(area, axis, hz)}},
                             FORMANT_COLOR, 2);
            }
            before = formants;
        }
    }

    static std::optional<double> nearest(const std::vector<double>& formants, double hz) {
        const auto found =
            std::min_element(formants.begin(), formants.end(), [hz](double a, double b) {
                return std::fabs(a - hz) < std::fabs(b - hz);
            });
        if (found == formants.end() || std::max(*found / hz, hz / *found) > TRACK_RATIO)
            return std::nullopt;
        return *found;
    }

    void draw_pitch(const Rectangle& area) {
        const PlotAxis axis = PlotAxis::logarithmic("Pitch (Hz)", LOWEST_PITCH, HIGHEST_PITCH);
        draw_axis(area, axis);
        std::vector<PlotPoint> points;
        for (size_t i = 0; i <= speech.frames.size(); i++) {
            if (i < speech.frames.size() && speech.frames[i].voicing > 0) {
                const double hz = pitch_hz(speech.frames[i].pitch * 256U);
                points.push_back({time_x(area, double(i) + 0.5), value_y(area, axis, hz)});
            } else {
                painter.line(points, PITCH_COLOR, 2);
                points.clear();
            }
        }
        draw_frame(area);
    }

    void draw_level(const Rectangle& area) {
        const PlotAxis axis = PlotAxis::linear("Level (dB)", LOWEST_LEVEL, HIGHEST_LEVEL, 20);
        draw_axis(area, axis);
        std::vector<PlotPoint> points;
        for (size_t i = 0; i < speech.frames.size(); i++) {
            const double amplitude = level_amplitude(speech.frames[i].level * 256U);
            const double level = amplitude > 0.0 ? 20.0 * std::log10(amplitude) : LOWEST_LEVEL;
            points.push_back({time_x(area, double(i) + 0.5),
                              value_y(area, axis, std::clamp(level, LOWEST_LEVEL, HIGHEST_LEVEL))});
        }
        painter.line(points, LEVEL_COLOR, 2);
        draw_frame(area);
    }

    void draw_time() {
        const double bottom = height - MARGIN_BOTTOM;
        const double area_width = width - MARGIN_LEFT - MARGIN_RIGHT;
        for (const AxisTick& tick : time_axis.ticks()) {
            const double x = MARGIN_LEFT + time_axis.position(tick.value) * area_width;
            painter.line({{x, bottom}, {x, bottom + 5}}, FRAME_COLOR, 1);
            painter.text(tick.label, x, bottom + 20,
                         {.size = LABEL_SIZE, .color = TEXT_COLOR, .align = TextAlign::MIDDLE});
        }
        painter.text(time_axis.get_title(), MARGIN_LEFT + area_width / 2, bottom + 42,
                     {.size = LABEL_SIZE, .color = TEXT_COLOR, .align = TextAlign::MIDDLE});
    }

    PlotPainter& painter;
    const Speech& speech;
    double width;
    double height;
    PlotAxis time_axis;
    double top = MARGIN_TOP;
};

} // namespace

void draw_speech(const Speech& speech, const std::string& title, const PictureOptions& options,
                 int results) {
    write_picture(options, results, [&](PlotPainter& painter) {
        SpeechPicture(painter, speech, options).draw(title);
    });
}

} // namespace tarquil
