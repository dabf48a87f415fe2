// Tests of the bank commands: parts that come back as they were, and what is refused.

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "instrument/settings.h"
#include "tests/tools/command_run.h"

namespace tarquil {

namespace {

namespace fs = std::filesystem;

class BankCommand : public testing::Test {
  protected:
    // A bank in which every instrument and the globals are different.
    static void write_bank(const std::string& path) {
        TarqSettings bank;
        for (unsigned i = 0; i < MAX_INSTRUMENTS; i++) {
            Instrument& instrument = bank.get_instrument(i);
            instrument.set_name("a/b " + std::to_string(i) + "=\x01");
            for (const ControllerInfo& info : channel_controller_rows())
                instrument.set_controller(info.number, int((info.number * 7 + i) % 128));
        }
        for (const ControllerInfo& info : global_controller_rows())
            bank.set_global_controller(info.number, int(info.number * 5 % 128));
        bank.set_song_title("Dawn = dusk");
        ASSERT_EQ(bank.text_save(path), 0);
    }

    static std::string run(const std::vector<std::string>& arguments) {
        const CommandRun done = run_command(arguments);
        EXPECT_EQ(done.status, 0) << done.errors;
        EXPECT_EQ(done.errors, "");
        return done.results;
    }

    InTempDirectory directory;
};

TEST_F(BankCommand, ABankTakenApartIsPutTogetherByteForByte) {
    write_bank("song.tqb");
    run({"bank", "extract", "song.tqb", "--all", "parts"});
    EXPECT_TRUE(fs::exists("parts/007-a_b_7=_.tqi"));
    run({"bank", "new", "again.tqb", "parts"});
    EXPECT_EQ(file_text("again.tqb"), file_text("song.tqb"));

    run({"bank", "new", "empty.tqb"});
    run({"bank", "extract", "empty.tqb", "--all", "empty"});
    run({"bank", "new", "empty2.tqb", "empty"});
    EXPECT_EQ(file_text("empty2.tqb"), file_text("empty.tqb"));
}

TEST_F(BankCommand, InsertReplacesOneInstrumentOnly) {
    write_bank("song.tqb");
    run({"bank", "extract", "song.tqb", "3", "three.tqi"});
    EXPECT_EQ(run({"bank", "extract", "song.tqb", "3"}), file_text("three.tqi"));
    run({"bank", "insert", "song.tqb", "4", "three.tqi", "--output", "other.tqb"});
    EXPECT_EQ(run({"bank", "extract", "other.tqb", "4", "-"}), file_text("three.tqi"));
    run({"bank", "extract", "song.tqb", "4", "four.tqi"});
    run({"bank", "insert", "other.tqb", "4", "four.tqi"});
    EXPECT_EQ(file_text("other.tqb"), file_text("song.tqb"));
    run({"bank", "insert", "other.tqb", "4", "four.tqi", "--name", "new name"});
    EXPECT_EQ(run({"bank", "extract", "other.tqb", "4"}).find("name = new_name\n"), 0U);
}

TEST_F(BankCommand, ShortInstrumentFilesTakeDefaultsWhichOneLineCounts) {
    save_file_to_string("lead.tqi", "osc1_type = 4\n");
    testing::internal::CaptureStdout();
    const CommandRun made = run_command(
        {"bank", "new", "song.tqb", "--title", "A", "--author", "B", "9=lead.tqi", "10=lead.tqi"});
    EXPECT_EQ(made.errors, "tarquil: 224 keys are missing and take their defaults\n");
    EXPECT_EQ(run_command({"bank", "insert", "song.tqb", "10", "lead.tqi", "--name", "x"}).errors,
              "tarquil: 112 keys are missing and take their defaults\n");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(run({"bank", "list", "song.tqb"}),
              "title:  A\nauthor: B\n  9  instrument_9\n 10  x\n");
    const auto all = nlohmann::json::parse(run({"bank", "list", "song.tqb", "--all", "--json"}));
    EXPECT_EQ(all["instruments"].size(), 128U);
    EXPECT_EQ(all["title"], "A");
}

TEST_F(BankCommand, ShowsInstrumentsAndGlobals) {
    write_bank("song.tqb");
    const std::string table = run({"bank", "show", "song.tqb", "0"});
    // 7 * 7 = 49; 49 / 127 as in the file; 60 log10 of it.
    EXPECT_NE(table.find("0.385827   49  -24.8 dB\n"), std::string::npos) << table;
    EXPECT_EQ(std::count(table.begin(), table.end(), '\n'), 1 + 113);
    const auto globals =
        nlohmann::json::parse(run({"bank", "show", "song.tqb", "--globals", "--json"}));
    EXPECT_EQ(globals["controllers"].size(), 59U);
    EXPECT_EQ(globals["controllers"][24]["key"], "retrigger_bpm");
    EXPECT_EQ(globals["controllers"][1]["value"].dump(),
              "1.496063"); // 19 * 10 / 127, as in the file
    EXPECT_EQ(globals["controllers"][24]["byte"], 54 * 5 % 128);
    EXPECT_EQ(globals["controllers"][24]["display"], "74 bpm");
}

TEST_F(BankCommand, GlobalsComeFromAFileOrABank) {
    write_bank("song.tqb");
    run({"bank", "new", "other.tqb", "--globals", "song.tqb", "--author", "B"});
    EXPECT_EQ(run({"bank", "list", "other.tqb"}), "title:  Dawn = dusk\nauthor: B\n");
    EXPECT_EQ(run({"bank", "show", "other.tqb", "--globals"}),
              run({"bank", "show", "song.tqb", "--globals"}));
}

TEST_F(BankCommand, RefusalsSayWhyAndChangeNothing) {
    write_bank("song.tqb");
    const std::string before = file_text("song.tqb");
    save_file_to_string("broken.tqi", "name = x\n\nbroken\n");
    save_file_to_string("good.tqi", "name = x\n");
    fs::create_directory("twice");
    save_file_to_string("twice/1-a.tqi", "");
    save_file_to_string("twice/001-b.tqi", "");
    const std::vector<std::pair<std::vector<std::string>, std::string>> cases = {
        {{"new", "song.tqb"}, "song.tqb: is there already; --force overwrites it"},
        {{"new", "song.tqb", "--force", "--title", "a\nb"},
         "--title: must not hold line breaks, \"#\" or the character 0"},
        {{"new", "song.tqb", "--force", "--author", "a#b"},
         "--author: must not hold line breaks, \"#\" or the character 0"},
        {{"new", "song.tqb", "--force", "128=good.tqi"},
         "128=good.tqi: instrument numbers go from 0 to 127"},
        {{"new", "song.tqb", "--force", "1=good.tqi", "1=good.tqi"},
         "good.tqi: instrument 1 is given twice"},
        {{"new", "song.tqb", "--force", "twice"}, "twice: two files for instrument 1"},
        {{"new", "song.tqb", "--force", "missing"}, "missing: No such file or directory"},
        {{"new", "song.tqb", "--force", "--globals", "broken.tqi"},
         "broken.tqi: is an instrument, not a bank"},
        {{"insert", "song.tqb", "1", "song.tqb"}, "song.tqb: is a bank, not an instrument"},
        {{"list", "good.tqi"}, "good.tqi: is an instrument, not a bank"},
        {{"insert", "song.tqb", "1", "broken.tqi"},
         "broken.tqi: line 3: no \"=\" with a value after it"},
        {{"insert", "song.tqb", "1", "missing.tqi"}, "missing.tqi: cannot be opened"},
        {{"insert", "song.tqb", "1", "good.tqi", "--name", "a\rb"},
         "--name: must not hold line breaks, \"#\" or the character 0"},
        {{"insert", "song.tqb", "1", "good.tqi", "--output", "missing/song.tqb"},
         "missing/song.tqb: cannot be opened for writing"},
        {{"extract", "song.tqb"}, "bank extract: either an instrument's number or --all is needed"},
        {{"extract", "song.tqb", "--all", "twice"}, "twice: the folder is not empty"},
        {{"show", "song.tqb"}, "bank show: either an instrument's number or --globals is needed"},
        {{"list", "missing.tqb"}, "missing.tqb: cannot be opened"},
    };
    for (const auto& [arguments, message] : cases) {
        std::vector<std::string> command = arguments;
        command.insert(command.begin(), "bank");
        EXPECT_EQ(refusal(command), "tarquil: " + message + "\n");
        EXPECT_EQ(file_text("song.tqb"), before);
    }
    refusal({"bank", "show", "song.tqb", "128"});
    refusal({"bank", "insert", "song.tqb", "x", "good.tqi"});
    const CommandRun full =
        run_command({"bank", "insert", "song.tqb", "1", "good.tqi", "--output", "/dev/full"});
    EXPECT_EQ(full.status, 1);
    EXPECT_EQ(full.errors, "tarquil: /dev/full: cannot be written\n");
}

} // namespace

} // namespace tarquil
