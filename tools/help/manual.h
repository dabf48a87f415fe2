// `tarquil manual`: the program's help as a manual page.

#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace tarquil {

// The page in troff with the man macros.
std::string manual_page(const CLI::App& app);

} // namespace tarquil
