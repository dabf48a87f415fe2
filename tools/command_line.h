// The command line program as a function: its arguments in, an exit status out.

#pragma once

#include <memory>

namespace CLI {
class App; // <CLI/CLI.hpp>, which takes its users several seconds each
}

namespace tarquil {

// The program with all its commands, ready to parse.  What they print goes to the descriptor
// `results`.
std::unique_ptr<CLI::App> make_command_line(int results);

// Does what the arguments ask for and returns the exit status.  A failure is one line on standard
// error.
int run_command_line(int argc, const char* const* argv, int results);

} // namespace tarquil
