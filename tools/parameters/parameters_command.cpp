// `tarquil parameters`: the plug-in's parameters as a document.

#include "tools/command.h"
#include "tools/parameters/parameter_list.h"
#include "tools/write_result.h"

namespace tarquil {

void add_parameters_command(CLI::App& app, int results) {
    CLI::App* command =
        app.add_subcommand("parameters", "List the plug-in's parameters, as Markdown");
    command->callback([results] { write_result(results, parameter_list()); });
}

} // namespace tarquil
