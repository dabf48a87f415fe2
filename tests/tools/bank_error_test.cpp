// What is said about a damaged bank.

#include "instrument/load_error.h"
#include "tools/bank_error.h"

#include <gtest/gtest.h>

#include "common/failure.h"
#include "common/load_string.h"
#include "tests/support/bank_text.h"
#include "tests/temp_directory.h"

namespace tarquil {

namespace {

// A good bank's text with the line of instrument 5 replaced.
std::string bank_text(const std::string& instrument_5) {
    std::string text = text_of(TarqSettings());
    const size_t start = text.find("instrument5 =");
    return text.replace(start, text.find('\n', start) - start, instrument_5);
}

std::string reason(const std::string& text) {
    const InTempDirectory directory;
    save_file_to_string("song.tqb", text);
    std::string message = "no failure";
    LoadReport report;
    try {
        load_bank_file("song.tqb", report);
    } catch (const BadInput& failure) {
        message = failure.what();
    }
    return message;
}

TEST(BankError, NamesThePlaceAndTheReason) {
    const InTempDirectory directory;
    LoadReport report;
    EXPECT_THROW(load_bank_file("missing.tqb", report), BadInput);
    EXPECT_EQ(explain_bank_error("missing.tqb", 1), "missing.tqb: cannot be opened");
    EXPECT_EQ(explain_bank_error(".", 2), ".: cannot be read, or is larger than 64 MiB");
    EXPECT_EQ(reason("reverb_wet = 1\r\n# b\r\nc\r\n"),
              "song.tqb: line 3: no \"=\" with a value after it");
    EXPECT_EQ(reason("name = x\n"), "song.tqb: is an instrument, not a bank");
    EXPECT_EQ(reason("state_version = 3\n"), "song.tqb: was saved by a later version");
    EXPECT_EQ(reason(bank_text("instrument5 = hex:6e6")),
              "song.tqb: instrument5: an odd number of hex digits");
    EXPECT_EQ(reason(bank_text("instrument5 = hex:6e6fxx61")),
              "song.tqb: instrument5: not a hex digit at character 5");
    EXPECT_EQ(reason(bank_text("instrument5 = hex:" + str2hex("name = x\nbroken\n"))),
              "song.tqb: instrument5: line 2: no \"=\" with a value after it");
    EXPECT_EQ(reason(bank_text("instrument5 = bytes:0a7;")),
              "song.tqb: instrument5: packed wrongly");
    EXPECT_EQ(reason(bank_text("instrument5 = lead.tqi")),
              "song.tqb: instrument5: lead.tqi: cannot be opened");
    EXPECT_EQ(reason(bank_text("")),
              "song.tqb: instrument5: not in the bank, and default.tqi: cannot be opened");
}

TEST(BankError, AGoodBankLoadsWithNamesAndWithoutLoneBlanks) {
    const InTempDirectory directory;
    save_file_to_string("song.tqb", bank_text("instrument5 = hex:"));
    LoadReport report;
    const auto bank = load_bank_file("song.tqb", report);
    EXPECT_EQ(report.num_missing, NUM_CHANNEL_CONTROLLERS);
    EXPECT_EQ(bank->get_instrument(5).get_name(), "instrument_5");
    EXPECT_EQ(bank->get_song_title(), "");
}

} // namespace

} // namespace tarquil
