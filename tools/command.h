// The commands of the command line program.
//
// Each add_ function adds one command, with its options and its help, to the program.  What the
// command is asked to do happens in a callback of the parse, which ends in a Failure when it can
// not be done; `results` is the descriptor that takes what the command prints.

#pragma once

#include <CLI/CLI.hpp>

namespace tarquil {

void add_bank_command(CLI::App& app, int results);
void add_map_command(CLI::App& app, int results);
void add_parameters_command(CLI::App& app, int results);
void add_play_command(CLI::App& app, int results);
void add_plot_command(CLI::App& app, int results);
void add_render_command(CLI::App& app, int results);
void add_speech_command(CLI::App& app, int results);

// Hidden from the help: the build runs them and installs what they print.
void add_completion_command(CLI::App& app, int results);
void add_manual_command(CLI::App& app, int results);

} // namespace tarquil
