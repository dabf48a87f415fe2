// The command line program.

#include "tools/command_line.h"
#include "tools/standard_output.h"

int main(int argc, char** argv) {
    return run_command_line(argc, argv, reserve_standard_output());
}
