// The top of every page.

#include "editor/view/header.h"

#include <cmath>
#include <utility>

#include "editor/kit/window_size.h"
#include "editor/view/channel_box.h"
#include "editor/view/main_menu.h"
#include "editor/view/output_meter.h"
#include "editor/view/scale_range.h"
#include "editor/widgets/button.h"
#include "editor/widgets/program_menu.h"
#include "editor/widgets/text_field.h"

namespace tarquil {

namespace {

constexpr double MARGIN = 12.0;
constexpr double ROW_Y = 9.0;
constexpr double ROW_HEIGHT = 28.0;
constexpr Rect CHANNELS{MARGIN, 46, WINDOW_WIDTH - 2 * MARGIN, 34};

class VoiceCount : public Widget {
  public:
    using Widget::Widget;
    void draw(Canvas& canvas, UiHost& host, const WidgetState& /*state*/) override {
        drawn = host.get_meters().voices;
        canvas.text(area, text(),
                    {theme::SMALL, drawn > 0 ? theme::TEXT : theme::TEXT_MUTED, Align::RIGHT});
    }
    Spoken spoken(UiHost& /*host*/) override { return {SpokenRole::LABEL, text()}; }
    [[nodiscard]] bool takes_focus() const override { return false; }
    [[nodiscard]] bool shows_meters() const override { return true; }
    std::vector<Rect> moved_areas(UiHost& host) override {
        return host.get_meters().voices == drawn ? std::vector<Rect>() : std::vector{area};
    }

  private:
    [[nodiscard]] std::string text() const {
        return std::to_string(drawn) + (drawn == 1 ? " voice" : " voices");
    }

    unsigned drawn = 0;
};

void step_program(UiHost& host, int steps) {
    EditorModel& model = host.get_model();
    const int program = int(model.get_state().program) + steps;
    if (program >= 0 && program < int(MAX_INSTRUMENTS))
        model.choose_program(unsigned(program));
}

// Where the edited program is heard.
class HeardOn : public Widget {
  public:
    using Widget::Widget;
    void draw(Canvas& canvas, UiHost& host, const WidgetState& /*state*/) override {
        const EditorModel& model = host.get_model();
        const Color color = model.is_heard() ? theme::TEXT_MUTED : theme::WARM;
        const auto [upper, lower] = texts(model);
        Rect rest = area;
        canvas.text(lower.empty() ? area : rest.cut_top(area.h / 2), upper, {theme::SMALL, color});
        canvas.text(rest, lower, {theme::SMALL, color});
    }
    std::string tooltip(UiHost& host) override {
        const std::string channel = std::to_string(host.get_model().channel() + 1);
        return host.get_model().is_heard()
                   ? "What is edited is what channel " + channel +
                         " plays\nA program that you choose is given to that channel"
                   : "What is edited is not heard\nChoose it in the list to play it on channel " +
                         channel + ", or click a channel to edit what that plays";
    }
    Spoken spoken(UiHost& host) override {
        const auto [upper, lower] = texts(host.get_model());
        Spoken spoken{SpokenRole::LABEL, upper + (lower.empty() ? "" : " " + lower)};
        spoken.help = tooltip(host);
        return spoken;
    }
    [[nodiscard]] bool takes_focus() const override { return false; }

  private:
    static std::pair<std::string, std::string> texts(const EditorModel& model) {
        if (!model.is_heard())
            return {"Not playing", "on any channel"};
        unsigned others = 0;
        for (unsigned channel = 0; channel < unsigned(NUM_CHANNELS); channel++)
            others += channel != model.channel() && model.plays_edited(channel) ? 1 : 0;
        return {"On channel " + std::to_string(model.channel() + 1),
                others > 0 ? "and " + std::to_string(others) + " more" : ""};
    }
};

void add_program(Page& page, Rect& row) {
    page.add<Button>(
        row.cut_left(24), "\u2039", [](UiHost& host) { step_program(host, -1); },
        "Previous program");
    row.cut_left(3);
    const Rect number = row.cut_left(54);
    page.add<Button>(
        number,
        [](UiHost& host) {
            const EditorModel& model = host.get_model();
            return Button::Look{program_number(model.get_state().program) + " \u25be"};
        },
        [number](UiHost& host) {
            const EditorModel& model = host.get_model();
            host.open_overlay(make_program_menu(
                model, number, model.get_state().program,
                [&host](unsigned program) { host.get_model().choose_program(program); }));
        },
        "Another program for the selected channel: all 128, with a search");
    row.cut_left(3);
    page.add<TextField>(
        row.cut_left(150), "Program name", "no name",
        [](EditorModel& model) { return model.program_name(); },
        [](EditorModel& model, const std::string& text) {
            model.rename_program(model.get_state().program, text);
        });
    row.cut_left(3);
    page.add<Button>(
        row.cut_left(24), "\u203a", [](UiHost& host) { step_program(host, 1); }, "Next program");
}

void add_history(Page& page, Rect& row) {
    page.add<Button>(
        row.cut_left(46),
        [](UiHost& host) {
            return Button::Look{"Undo", !host.get_model().undo_name().empty()};
        },
        [](UiHost& host) {
            host.show_message("Undone: " + host.get_model().undo_name());
            host.get_model().undo();
        },
        "Takes back the last change");
    row.cut_left(3);
    page.add<Button>(
        row.cut_left(46),
        [](UiHost& host) {
            return Button::Look{"Redo", !host.get_model().redo_name().empty()};
        },
        [](UiHost& host) {
            host.show_message("Done again: " + host.get_model().redo_name());
            host.get_model().redo();
        },
        "Does again what was undone");
}

std::string percent(double scale) {
    return std::to_string(std::lround(scale * 100)) + " %";
}

void add_scale(Page& page, const Rect& area, const HeaderControls& controls) {
    page.add<Button>(
        area,
        [controls](UiHost& /*host*/) {
            return Button::Look{percent(controls.get_scale()) + " \u25be"};
        },
        [controls, area](UiHost& host) {
            std::vector<MenuItem> items;
            for (const double scale : offered_scales(controls.get_largest_scale()))
                items.push_back({percent(scale), std::abs(scale - controls.get_scale()) < 0.01,
                                 true, [controls, scale] { controls.set_scale(scale); }});
            host.open_overlay(std::make_unique<Menu>(area, std::move(items)));
        },
        "Size of the window");
}

} // namespace

Page make_header(const HeaderControls& controls) {
    Page page;
    Rect row{MARGIN, ROW_Y, WINDOW_WIDTH - 2 * MARGIN, ROW_HEIGHT};
    page.add<MainMenu>(row.cut_left(82));
    row.cut_left(4);
    add_program(page, row);
    row.cut_left(7);
    page.add<HeardOn>(row.cut_left(84));
    row.cut_left(3);
    add_history(page, row);
    add_scale(page, row.cut_right(66), controls);
    row.cut_right(6);
    page.add<Button>(
        row.cut_right(60), "Panic", [](UiHost& host) { host.get_model().get_synth().panic(); },
        "Ends all notes of all channels");
    row.cut_right(14);
    page.add<OutputMeter>(row.cut_right(250), *controls.meter, controls.clear_clip);
    row.cut_right(10);
    page.add<VoiceCount>(row.cut_right(66));
    for (unsigned channel = 0; channel < unsigned(NUM_CHANNELS); channel++) {
        const double width = (CHANNELS.w + 4) / NUM_CHANNELS;
        page.add<ChannelBox>(Rect{CHANNELS.x + channel * width, CHANNELS.y, width - 4, CHANNELS.h},
                             channel, controls.channel_lights + channel);
    }
    return page;
}

} // namespace tarquil
