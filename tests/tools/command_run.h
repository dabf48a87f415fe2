// A run of the command line program inside the test.

#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "tests/support/files.h"
#include "tests/temp_directory.h"
#include "tools/command_line.h"

namespace tarquil {

struct CommandRun {
    int status = 0;
    std::string results;
    std::string errors; // standard error
};

// `arguments` without the program's name.
inline CommandRun run_command(const std::vector<std::string>& arguments) {
    std::vector<const char*> argv{"tarquil"};
    for (const std::string& argument : arguments)
        argv.push_back(argument.c_str());
    const TempDirectory directory;
    const std::string path = directory.path("results");
    const int results = open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    CommandRun run;
    testing::internal::CaptureStderr();
    run.status = run_command_line(int(argv.size()), argv.data(), results);
    run.errors = testing::internal::GetCapturedStderr();
    close(results);
    run.results = file_text(path);
    return run;
}

// What the program says of arguments or input that it does not take: one line, and nothing else.
inline std::string refusal(const std::vector<std::string>& arguments) {
    const CommandRun run = run_command(arguments);
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.results, "");
    EXPECT_EQ(run.errors.find("tarquil: "), 0U) << run.errors;
    EXPECT_EQ(run.errors.find('\n'), run.errors.size() - 1) << run.errors;
    return run.errors;
}

} // namespace tarquil
