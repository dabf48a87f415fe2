// The plug-in's parameters as a document.

#pragma once

#include <string>

namespace tarquil {

// Markdown: a table with a row for each, then the lists that some choose from.
std::string parameter_list();

} // namespace tarquil
