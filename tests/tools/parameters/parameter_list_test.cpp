// Tests of the list of parameters: the document in the tree is what the program makes.

#include "tests/tools/command_run.h"

namespace tarquil {

namespace {

TEST(ParameterList, DocumentIsUpToDate) {
    const CommandRun run = run_command({"parameters"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TRUE(run.results == file_text(PARAMETER_DOCUMENT))
        << "run: tarquil parameters > docs/parameters.md";
}

} // namespace

} // namespace tarquil
