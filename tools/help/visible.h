// What of the program its help, completion and manual mention.

#pragma once

#include <CLI/CLI.hpp>
#include <vector>

namespace tarquil {

// The commands of `app`, or of a command, in the order they were added; those without a group are
// hidden.
inline std::vector<const CLI::App*> visible_commands(const CLI::App& app) {
    return app.get_subcommands(
        [](const CLI::App* command) { return !command->get_group().empty(); });
}

// The options with a name, or the positional arguments.
inline std::vector<const CLI::Option*> visible_options(const CLI::App& app, bool positional) {
    return app.get_options([positional](const CLI::Option* option) {
        return !option->get_group().empty() && option->get_positional() == positional;
    });
}

} // namespace tarquil
