// Tests of instruments: defaults, text, files and events.

#include "instrument/instrument.h"

#include <gtest/gtest.h>

#include <vector>

#include "common/load_string.h"
#include "instrument/names.h"
#include "tests/temp_directory.h"

namespace tarquil {

namespace {

// The instrument's text with a byte for every row: row i has the byte (i * 37 + shift) % 128.
Instrument varied(int shift) {
    Instrument instrument;
    instrument.set_name("Some name");
    int i = 0;
    for (const ControllerInfo& info : channel_controller_rows())
        instrument.set_controller(info.number, (i++ * 37 + shift) % 128);
    return instrument;
}

bool same_controllers(const Instrument& a, const Instrument& b) {
    for (unsigned number = 0; number < NUM_CONTROLLERS; number++) {
        if (a.get_controller(number) != b.get_controller(number))
            return false;
    }
    return true;
}

TEST(Instrument, TextWithoutKeysGivesDefaultsAndAWarningForEach) {
    Instrument instrument = varied(1);
    LoadReport report;
    testing::internal::CaptureStdout();
    EXPECT_EQ(instrument.load_from_string("unknown = 1", &report), 0);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    ASSERT_EQ(report.warnings.size(), 113U);
    EXPECT_EQ(report.warnings[0], "main_volume not found, using defaults");
    EXPECT_EQ(report.summary(), "113 keys are missing and take their defaults");
    EXPECT_TRUE(same_controllers(instrument, Instrument()));
    EXPECT_EQ(instrument.get_name(), "Some_name");
}

TEST(Instrument, AFailedLoadChangesNothing) {
    Instrument instrument = varied(3);
    EXPECT_EQ(instrument.load_from_string("name = other\nmain_volume = 1\nbroken"), 6);
    EXPECT_EQ(instrument.text_load("hex:4"), 2);
    EXPECT_EQ(instrument.text_load("hex:zz"), 3);
    EXPECT_EQ(instrument.text_load("/missing/file"), 1);
    EXPECT_TRUE(same_controllers(instrument, varied(3)));
    EXPECT_EQ(instrument.get_name(), "Some_name");
}

TEST(Instrument, BytesComeAsTheTextMapsThem) {
    Instrument instrument;
    LoadReport report;
    EXPECT_EQ(instrument.load_from_string(
                  "osc1_type = 77\nmain_volume = 99\npanning = nan\n"
                  "aux1_level = inf\naux2_level = -inf\nfilter1_type = 0x3\nosc3_type = x",
                  &report),
              0);
    EXPECT_EQ(report.num_out_of_range, 4U);
    EXPECT_EQ(report.warnings[0], "Controller 7 value 99.000000 out of range, clamping to lowest");
    EXPECT_EQ(instrument.get_controller(CTRL_OSC1_TYPE), 77);
    EXPECT_EQ(instrument.get_controller(CTRL_MAIN_VOLUME), 127);
    EXPECT_EQ(instrument.get_controller(CTRL_PANNING), 0);
    EXPECT_EQ(instrument.get_controller(CTRL_AUX1_LEVEL), 127);
    EXPECT_EQ(instrument.get_controller(CTRL_AUX2_LEVEL), 0);
    EXPECT_EQ(instrument.get_controller(CTRL_FILTER1_TYPE), 3);
    EXPECT_EQ(instrument.get_controller(CTRL_OSC3_TYPE), 0);
}

TEST(Instrument, NamesLoseTheirWhiteSpace) {
    Instrument instrument;
    instrument.set_name("a b\tc");
    EXPECT_EQ(instrument.get_name(), "a_b_c");
    instrument.set_filename("some dir/a b.tqi");
    EXPECT_EQ(instrument.get_filename(), "some dir/a_b.tqi");
    instrument.set_filename("a b.tqi");
    EXPECT_EQ(instrument.get_filename(), "a b.tqi");
}

TEST(Names, StorableTextIsWhatAFileGivesBack) {
    EXPECT_EQ(storable_text("\t\n wide pad \r\v"), "wide pad");
    EXPECT_EQ(storable_text("a#b\nc\x7F\x1F d"), "a_b_c__ d");
    EXPECT_EQ(storable_text("\xC3\xA4 ~!"), "\xC3\xA4 ~!");
    EXPECT_EQ(storable_text(" \t "), "");
}

TEST(Instrument, FilesAreSavedAndLoaded) {
    const TempDirectory directory;
    Instrument saved = varied(9);
    saved.set_filename(directory.path("x.tqi"));
    EXPECT_EQ(saved.text_save(), 0);
    Instrument loaded;
    loaded.set_filename(directory.path("x.tqi"));
    EXPECT_EQ(loaded.text_load(), 0);
    EXPECT_TRUE(same_controllers(saved, loaded));
    saved.set_filename(directory.path("missing/x.tqi"));
    EXPECT_EQ(saved.text_save(), 1);
    saved.set_filename("/dev/full");
    EXPECT_EQ(saved.text_save(), 2);
}

} // namespace

} // namespace tarquil
