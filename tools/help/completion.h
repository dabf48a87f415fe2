// `tarquil completion`: the program's commands and options as a completion script.

#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace tarquil {

// A script for bash that completes commands, options and file names of `app`.
std::string bash_completion(const CLI::App& app);

} // namespace tarquil
