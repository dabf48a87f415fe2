// The command line program.

#include "tools/command_line.h"
#include "tools/standard_output.h"

namespace tarquil {} // namespace tarquil

int main(int argc, char** argv) {
    using namespace tarquil;
    return run_command_line(argc, argv, reserve_standard_output());
}
