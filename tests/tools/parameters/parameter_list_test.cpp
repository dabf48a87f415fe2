// Tests of the list of parameters: the document in the tree is what the program makes.

#include "tests/tools/command_run.h"

namespace tarquil {

namespace {

TEST(ParameterList, DocumentIsUpToDate) {
    std::string document;
    ASSERT_EQ(load_file_to_string(PARAMETER_DOCUMENT, document), 0);
    const CommandRun run = run_command({"parameters"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TRUE(run.results == document) << "run: tarquil parameters > docs/parameters.md";
}

} // namespace

} // namespace tarquil
