// Tests of the plot commands: what the pictures hold and what is refused.

#include <cairo.h>

#include <filesystem>

#include "tests/decimal_comma_locale.h"
#include "tests/tools/command_run.h"

namespace tarquil {

namespace {

class PlotCommand : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_EQ(save_file_to_string("lead.tqi", "name = <lead> & co\nosc1_osc2_mix = 0.5\n"), 0);
        ASSERT_EQ(save_file_to_string("odd.tqi", "osc1_type = 77\nfilter1_type = 99\n"), 0);
    }

    static std::string svg(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "plot");
        arguments.emplace_back("-");
        const CommandRun run = run_command(arguments);
        EXPECT_EQ(run.status, 0) << run.errors;
        EXPECT_EQ(run.results.find("<?xml"), 0U);
        EXPECT_EQ(run.results.find("nan"), std::string::npos);
        return run.results;
    }

    static void expect_texts(const std::string& picture, const std::vector<std::string>& texts) {
        for (const std::string& text : texts)
            EXPECT_NE(picture.find(">" + text + "</text>"), std::string::npos) << text;
    }

    static void expect_refused(std::vector<std::string> arguments, const std::string& reason) {
        arguments.insert(arguments.begin(), "plot");
        EXPECT_EQ(refusal(arguments), "tarquil: " + reason + "\n");
        EXPECT_FALSE(std::filesystem::exists("x.svg"));
    }

    InTempDirectory directory;
};

TEST_F(PlotCommand, PicturesSayWhatTheyShow) {
    expect_texts(svg({"filter", "--type", "Ladder-LP-24", "--cutoff", "1500", "--resonance", "4"}),
                 {"Frequency response", "Frequency (Hz)", "Gain (dB)", "20", "20k",
                  "ladder LP 24 dB/oct", "1.50 kHz, Q 4.00"});
    expect_texts(svg({"filter", "--instrument", "lead.tqi"}),
                 {"Filters: &lt;lead&gt;_&amp;_co", "All filters", "Voice filter", "off"});
    expect_texts(svg({"wave", "--instrument", "lead.tqi", "--note", "36"}),
                 {"Waveform: &lt;lead&gt;_&amp;_co, note 36", "Time (ms)", "Amplitude", "Mix",
                  "Oscillator 1", "saw", "Oscillator 2", "square"});
    expect_texts(svg({"envelope", "--instrument", "lead.tqi", "--hold", "2.5"}),
                 {"Envelopes: &lt;lead&gt;_&amp;_co, held for 2.5 s", "Time (s)", "Level",
                  "Envelope 1 (amplitude)", "attack 0.02 ms, decay 0.88 ms"});
}

TEST_F(PlotCommand, AnyBytesInANameAndAnyChoiceCanBeDrawn) {
    ASSERT_EQ(save_file_to_string("bytes.tqi", "name = \xC3\xA4\xFF\xED\xA0\x80\x01" +
                                                   std::string(300, 'x') + "\n"),
              0);
    const std::string picture = svg({"wave", "--instrument", "bytes.tqi"});
    const std::string replacement = "\xEF\xBF\xBD";
    EXPECT_NE(picture.find("Waveform: \xC3\xA4" + replacement + replacement + replacement +
                           replacement + replacement + "xxx"),
              std::string::npos);
    EXPECT_NE(picture.find("xxx...</text>"), std::string::npos);
    EXPECT_EQ(run_command({"plot", "wave", "--instrument", "bytes.tqi", "wave.png"}).status, 0);
    expect_texts(svg({"filter", "--instrument", "odd.tqi"}), {"ladder notch"});
    expect_texts(svg({"wave", "--instrument", "odd.tqi"}), {"noise"});
}

TEST_F(PlotCommand, ABanksProgramIsDrawn) {
    ASSERT_EQ(run_command({"bank", "new", "song.tqb", "5=lead.tqi"}).status, 0);
    EXPECT_EQ(svg({"envelope", "--bank", "song.tqb", "--program", "5"}),
              svg({"envelope", "--instrument", "lead.tqi"}));
    expect_texts(svg({"wave", "--bank", "song.tqb"}), {"Waveform: instrument_0, note 60"});
}

TEST_F(PlotCommand, APngHasTheSizeAskedFor) {
    const CommandRun run = run_command(
        {"plot", "filter", "--type", "lowpass", "--width", "700", "--height", "400", "filter.PNG"});
    EXPECT_EQ(run.status, 0) << run.errors;
    cairo_surface_t* surface = cairo_image_surface_create_from_png("filter.PNG");
    ASSERT_EQ(cairo_surface_status(surface), CAIRO_STATUS_SUCCESS);
    EXPECT_EQ(cairo_image_surface_get_width(surface), 700);
    EXPECT_EQ(cairo_image_surface_get_height(surface), 400);
    cairo_surface_destroy(surface);
}

TEST_F(PlotCommand, WhatCannotBeDrawnIsRefused) {
    expect_refused({"filter", "x.svg"}, "plot filter: --type, --instrument or --bank is needed");
    expect_refused({"wave", "x.svg"}, "plot wave: --instrument or --bank is needed");
    expect_refused({"envelope", "--instrument", "none.tqi", "x.svg"}, "none.tqi: cannot be opened");
    expect_refused({"wave", "--instrument", "lead.tqi", "x.gif"},
                   "x.gif: a picture's name ends in .svg or .png");
    expect_refused({"wave", "--instrument", "lead.tqi", ".svg"},
                   ".svg: a picture's name ends in .svg or .png");
    expect_refused({"filter", "--type", "lowpass", "--cutoff", "nan", "x.svg"},
                   "--cutoff: nan is not a number from 1 to 22050");
    expect_refused({"envelope", "--instrument", "lead.tqi", "--hold", "-1", "x.svg"},
                   "--hold: -1 is not a number from 0 to 60");
    expect_refused({"filter", "--type", "ladder-lp-1", "x.svg"},
                   "--type ladder-lp-1: more than one: ladder LP 12 dB/oct, ladder LP 18 dB/oct");
    expect_refused({"filter", "--cutoff", "100", "x.svg"}, "--cutoff requires --type");
    expect_refused({"wave", "--instrument", "lead.tqi", "nowhere/x.svg"},
                   "nowhere/x.svg: cannot be opened for writing");
    EXPECT_TRUE(refusal({"plot", "filter", "--type", "brick", "x.svg"})
                    .starts_with("tarquil: --type brick: not one of: off, lowpass, "));
}

TEST_F(PlotCommand, TheLocaleChangesNothing) {
    const std::vector<std::string> arguments = {"envelope", "--instrument", "lead.tqi", "--hold",
                                                "0.25"};
    const std::string before = svg(arguments);
    const DecimalCommaLocale locale;
    EXPECT_TRUE(svg(arguments) == before);
}

} // namespace

} // namespace tarquil
