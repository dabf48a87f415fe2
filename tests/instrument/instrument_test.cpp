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

TEST(Instrument, ItsGlobalResonancesStartAsAChannelFiltersDo) {
    const Instrument instrument;
    for (unsigned number = CTRL_GLOBAL_FILTER1_RESONANCE; number <= CTRL_GLOBAL_FILTER6_RESONANCE;
         number += 4)
        EXPECT_EQ(instrument.get_controller(number), map_float_to_char(number, 1.5F));
    EXPECT_EQ(instrument.get_controller(CTRL_GLOBAL_FILTER5_TYPE), 2);
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

TEST(Instrument, TheDefaultFileIsLeftEmpty) {
    const InTempDirectory here;
    EXPECT_EQ(save_file_to_string("default.tqi", "name = x"), 0);
    Instrument instrument;
    instrument.set_filename("default.tqi");
    EXPECT_EQ(instrument.text_save(), 15);
    std::string text = "unread";
    EXPECT_EQ(load_file_to_string("default.tqi", text), 0);
    EXPECT_EQ(text, "");
}

TEST(Instrument, AProgramChangeEmitsEveryChannelController) {
    const Instrument instrument = varied(7);
    std::vector<midi_event> events(206);
    EXPECT_EQ(instrument.emit_program_change(events.data(), 5, 1000, 205), 0U);
    EXPECT_EQ(events[0].status, 0);
    const unsigned count = instrument.emit_program_change(events.data(), 5, 1000, 206);
    ASSERT_EQ(count, NUM_CONTROLLERS - NUM_GLOBAL_CONTROLLERS);
    unsigned last = 0;
    for (unsigned i = 0; i < count; i++) {
        EXPECT_EQ(events[i].time, 1000U);
        EXPECT_EQ(events[i].status, 0xB5);
        EXPECT_FALSE(is_global_controller(events[i].data1));
        EXPECT_EQ(events[i].data2, instrument.get_controller(events[i].data1));
        EXPECT_TRUE(i == 0 || events[i].data1 > last);
        last = events[i].data1;
    }
    EXPECT_EQ(instrument.emit_single_controller(events.data(), 15, CTRL_OSC1_TYPE, 7), 1U);
    EXPECT_EQ(events[0].status, 0xBF);
    EXPECT_EQ(events[0].data1, CTRL_OSC1_TYPE);
}

} // namespace

} // namespace tarquil
