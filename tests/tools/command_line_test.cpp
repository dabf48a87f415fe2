// The command line program: what is refused, help, output that fails.

#include "tools/command_line.h"

#include "tests/tools/command_run.h"

namespace tarquil {

namespace {

TEST(CommandLine, AnythingUnknownIsOneLineAndStatus2) {
    const std::vector<std::vector<std::string>> cases = {
        {},
        {"--frobnicate"},
        {"bank"},
        {"bank", "list"},
        {"bank", "list", "--frobnicate", "song.tqb"},
    };
    for (const std::vector<std::string>& arguments : cases)
        refusal(arguments);
    EXPECT_EQ(refusal({"frobnicate"}), "tarquil: unknown command frobnicate\n");
    EXPECT_EQ(refusal({"bank", "frobnicate"}), "tarquil: unknown command frobnicate\n");
}

TEST(CommandLine, HelpAndVersionAreResults) {
    const CommandRun help = run_command({"bank", "list", "--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_NE(help.results.find("--json"), std::string::npos);
    EXPECT_EQ(help.errors, "");
    const CommandRun version = run_command({"--version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.results.find("tarquil "), 0U);
}

TEST(CommandLine, ResultsThatCannotBeWrittenAreStatus1) {
    const int full = open("/dev/full", O_WRONLY | O_CLOEXEC);
    const char* arguments[] = {"tarquil", "--version"};
    testing::internal::CaptureStderr();
    EXPECT_EQ(run_command_line(2, arguments, full), 1);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("cannot be written"), std::string::npos);
    close(full);
}

} // namespace

} // namespace tarquil
