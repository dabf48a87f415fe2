// Tests of the lines that stand for no controller: what is said about an instrument, and what this
// version does not know.

#include "instrument/kept_lines.h"

#include <gtest/gtest.h>

#include "instrument/instrument.h"

namespace tarquil {

namespace {

std::string saved_lines(const Instrument& instrument) {
    const std::string text = instrument.save_to_string();
    return text.substr(Instrument().save_to_string().size() + instrument.get_name().size());
}

Instrument loaded(const std::string& lines, LoadReport* report = nullptr) {
    Instrument instrument;
    EXPECT_EQ(instrument.load_from_string(instrument.save_to_string() + lines, report), 0);
    instrument.set_name("");
    return instrument;
}

TEST(KeptLines, UnknownLinesComeBackInOrder) {
    const std::string lines =
        "zeta = 1 \ncomment = c\n alpha =  \n = x = y\nauthor = a\nbeta = 2 \n";
    const Instrument instrument = loaded("zeta=1 # note\ncomment = c  \nzeta = 9\n alpha =   \n = "
                                         "x = y\nauthor = a\nauthor = b\nbeta =  2 ");
    EXPECT_EQ(saved_lines(instrument), lines);
    EXPECT_EQ(saved_lines(loaded(lines)), lines);
    Instrument again = instrument;
    EXPECT_EQ(again.load_from_string("name = other"), 0);
    EXPECT_EQ(saved_lines(again), "");
}

TEST(KeptLines, WhatIsSaidIsStoredLikeAName) {
    Instrument instrument = loaded("comment = \n");
    EXPECT_EQ(saved_lines(instrument), "");
    instrument.set_text(InstrumentText::TAGS, " warm #1\nwide ");
    instrument.set_text(InstrumentText::CATEGORY, "pad");
    instrument.set_text(InstrumentText::AUTHOR, "x");
    instrument.set_text(InstrumentText::AUTHOR, "");
    EXPECT_EQ(saved_lines(instrument), "tags = warm _1_wide\ncategory = pad\n");
    const Instrument again = loaded(saved_lines(instrument));
    EXPECT_EQ(again.get_text(InstrumentText::TAGS), "warm _1_wide");
    EXPECT_EQ(again.get_text(InstrumentText::CATEGORY), "pad");
    EXPECT_EQ(again.get_text(InstrumentText::AUTHOR), "");
    EXPECT_EQ(again.get_kept_lines(), instrument.get_kept_lines());
    instrument.load_default();
    EXPECT_EQ(saved_lines(instrument), "");
    instrument.set_text(InstrumentText::COMMENT, "\xC3\xA9" + std::string(5000, 'x'));
    EXPECT_EQ(instrument.get_text(InstrumentText::COMMENT).size(), Instrument::MAX_TEXT_BYTES);
}

TEST(KeptLines, WhatIsNotKnownIsBounded) {
    std::string many;
    for (int i = 0; i < 1000; i++)
        many += "key" + std::to_string(i) + " = x\n";
    LoadReport report;
    const Instrument instrument = loaded(many + "author = a\n", &report);
    const std::string saved = saved_lines(instrument);
    EXPECT_EQ(size_t(std::count(saved.begin(), saved.end(), '\n')), KeptLines::MAX_LINES + 1);
    EXPECT_EQ(instrument.get_text(InstrumentText::AUTHOR), "a");
    EXPECT_EQ(report.num_others, 1000 - KeptLines::MAX_LINES);

    const std::string long_line = "key = " + std::string(KeptLines::MAX_BYTES, 'x') + "\n";
    EXPECT_EQ(saved_lines(loaded("a = 1\n" + long_line)), "a = 1\n");
}

} // namespace

} // namespace tarquil
