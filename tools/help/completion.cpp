// `tarquil completion`: the program's commands and options as a completion script.

#include "tools/help/completion.h"

#include "tools/command.h"
#include "tools/help/visible.h"
#include "tools/write_result.h"

namespace tarquil {

namespace {

// "-h --help --json list show"
std::string words(const CLI::App& app) {
    std::string text;
    for (const CLI::App* command : visible_commands(app))
        text += command->get_name() + " ";
    for (const CLI::Option* option : visible_options(app, false)) {
        for (const std::string& name : option->get_snames())
            text += "-" + name + " ";
        for (const std::string& name : option->get_lnames())
            text += "--" + name + " ";
    }
    if (!text.empty())
        text.pop_back();
    return text;
}

// Commands are told apart by the path of their names: "/bank/list".
void collect(const CLI::App& app, const std::string& path, std::string& paths, std::string& cases) {
    const std::vector<const CLI::App*> commands = visible_commands(app);
    cases += "    '" + path + "') words='" + words(app) +
             "' files=" + (commands.empty() ? "yes" : "") + " ;;\n";
    for (const CLI::App* command : commands) {
        const std::string below = path + "/" + command->get_name();
        paths += (paths.empty() ? "" : " | ") + below;
        collect(*command, below, paths, cases);
    }
}

} // namespace

std::string bash_completion(const CLI::App& app) {
    std::string paths;
    std::string cases;
    collect(app, "", paths, cases);
    const std::string& name = app.get_name();
    return "# bash completion for " + name + "\n\n_" + name + "() {\n" +
           "    local current=${COMP_WORDS[COMP_CWORD]} command= words= files= i\n"
           "    for ((i = 1; i < COMP_CWORD; i++)); do\n"
           "        case $command/${COMP_WORDS[i]} in\n"
           "        " +
           paths +
           ") command+=/${COMP_WORDS[i]} ;;\n"
           "        esac\n"
           "    done\n"
           "    case $command in\n" +
           cases +
           "    esac\n"
           "    if [[ $files && $current != -* ]]; then\n"
           "        mapfile -t COMPREPLY < <(compgen -f -- \"$current\")\n"
           "    else\n"
           "        mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"$current\")\n"
           "    fi\n"
           "}\n\n"
           "complete -o filenames -F _" +
           name + " " + name + "\n";
}

void add_completion_command(CLI::App& app, int results) {
    CLI::App* command = app.add_subcommand("completion", "Print a completion script for bash");
    command->group("");
    command->callback([&app, results] { write_result(results, bash_completion(app)); });
}

} // namespace tarquil
