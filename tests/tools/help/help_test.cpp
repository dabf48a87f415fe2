// Tests of the completion script and the manual page: all visible commands and options are in them.

#include <cstdlib>

#include "tests/tools/command_run.h"
#include "tools/help/visible.h"

namespace tarquil {

namespace {

// What bash offers for the last word, one a line.
std::string complete(const std::string& words, int index) {
    const InTempDirectory directory;
    save_file_to_string("tarquil.bash", run_command({"completion"}).results);
    save_file_to_string("my song.tqb", "");
    save_file_to_string("complete.sh", "source tarquil.bash\nCOMP_WORDS=(" + words +
                                           ")\nCOMP_CWORD=" + std::to_string(index) +
                                           "\n_tarquil\nprintf '%s\\n' \"${COMPREPLY[@]}\"\n");
    EXPECT_EQ(std::system("bash -n tarquil.bash && bash complete.sh > out"), 0);
    return file_text("out");
}

// Every visible command below `app`, with all its options, is in `text`.
void expect_all(const CLI::App& app, const std::string& text, const std::string& dash) {
    for (const CLI::Option* option : visible_options(app, false)) {
        for (const std::string& name : option->get_lnames()) {
            std::string words;
            for (const char c : "--" + name)
                words += c == '-' ? dash : std::string(1, c);
            EXPECT_NE(text.find(words), std::string::npos) << app.get_name() << " " << name;
        }
    }
    for (const CLI::App* command : visible_commands(app)) {
        EXPECT_NE(text.find(command->get_name()), std::string::npos);
        expect_all(*command, text, dash);
    }
}

TEST(Completion, OffersCommandsOptionsAndFiles) {
    EXPECT_EQ(complete("tarquil ba", 1), "bank\n");
    EXPECT_EQ(complete("tarquil bank e", 2), "extract\n");
    EXPECT_EQ(complete("tarquil bank show --g", 3), "--globals\n");
    EXPECT_EQ(complete("tarquil bank show my", 3), "my song.tqb\n");
    EXPECT_EQ(complete("tarquil com", 1), "\n"); // hidden
}

TEST(Completion, HasEveryOption) {
    const auto app = make_command_line(-1);
    expect_all(*app, run_command({"completion"}).results, "-");
}

TEST(Manual, HasEverySectionCommandOptionAndExample) {
    const std::string page = run_command({"manual"}).results;
    for (const char* section : {"NAME", "SYNOPSIS", "COMMANDS", "EXAMPLES", "EXIT STATUS", "FILES"})
        EXPECT_NE(page.find(std::string(".SH ") + section + "\n"), std::string::npos) << section;
    EXPECT_NE(page.find("tarquil bank new song.tqb song/\n"), std::string::npos);
    const auto app = make_command_line(-1);
    expect_all(*app, page, "\\-");
    EXPECT_EQ(page.find("completion"), std::string::npos);
}

} // namespace

} // namespace tarquil
