// `tarquil manual`: the program's help as a manual page.

#include "tools/help/manual.h"

#include <sstream>

#include "tools/command.h"
#include "tools/help/visible.h"
#include "tools/write_result.h"

namespace tarquil {

namespace {

constexpr const char* EXAMPLES_HEADING = "Examples:";

constexpr const char* CLOSING = R"(.SH EXIT STATUS
.TP
0
done
.TP
1
cannot be done here: a resource is missing, or a result cannot be written
.TP
2
an option, an input file or an output name is to blame
.PP
What fails prints one line on standard error: the file, the place in it and the reason.
.SH FILES
.TP
.I *.tqb
A bank: 128 instruments, the global controllers, the song's title and author.
.TP
.I *.tqi
An instrument.
.TP
.I default.tqi
In the current folder: stands for the instruments that a bank does not have.
.TP
.I $XDG_CACHE_HOME/tarquil
Wavetables, computed once; without the variable
.IR ~/.cache/tarquil .
)";

// Plain text, safe anywhere on a line.
std::string escaped(const std::string& text) {
    std::string out;
    for (size_t i = 0; i < text.size(); i++) {
        const bool line_start = i == 0 || text[i - 1] == '\n';
        if (line_start && (text[i] == '.' || text[i] == '\''))
            out += "\\&";
        if (text[i] == '\\')
            out += "\\e";
        else if (text[i] == '-')
            out += "\\-";
        else
            out += text[i];
    }
    return out;
}

std::string bold(const std::string& text) {
    return "\\fB" + escaped(text) + "\\fR";
}

// "[--json] BANK": all that may follow the command's name.
std::string usage(const CLI::App& command) {
    std::string text = "[\\fIOPTIONS\\fR]";
    for (const CLI::Option* option : visible_options(command, true)) {
        const bool many = option->get_expected_max() >= CLI::detail::expected_max_vector_size;
        const std::string name =
            "\\fI" + escaped(option->get_name(true)) + "\\fR" + (many ? "..." : "");
        text += option->get_required() ? " " + name : " [" + name + "]";
    }
    return text;
}

// The placeholder of the option's value, without the limits that follow it.
std::string value_name(const CLI::Option& option) {
    if (option.get_type_size() == 0)
        return "";
    const std::string type = option.get_type_name();
    return type.substr(0, type.find_first_of(": "));
}

void append_option(std::string& page, const CLI::Option& option) {
    page += ".TP\n";
    if (option.get_positional()) {
        page += "\\fI" + escaped(option.get_name(true)) + "\\fR";
    } else {
        std::string names;
        for (const std::string& name : option.get_snames())
            names += (names.empty() ? "" : ", ") + bold("-" + name);
        for (const std::string& name : option.get_lnames())
            names += (names.empty() ? "" : ", ") + bold("--" + name);
        page += names;
        const std::string value = value_name(option);
        if (!value.empty())
            page += " \\fI" + escaped(value) + "\\fR";
    }
    page += "\n" + escaped(option.get_description());
    if (!option.get_default_str().empty())
        page += " (" + escaped(option.get_default_str()) + ")";
    page += "\n";
}

void append_options(std::string& page, const CLI::App& command) {
    for (const bool positional : {true, false}) {
        for (const CLI::Option* option : visible_options(command, positional))
            append_option(page, *option);
    }
}

// A command that does something, and the words that call it.
struct Leaf {
    std::string words;
    const CLI::App* command;
};

void collect_leaves(const CLI::App& app, const std::string& words, std::vector<Leaf>& leaves) {
    const std::vector<const CLI::App*> commands = visible_commands(app);
    if (commands.empty())
        leaves.push_back({words, &app});
    for (const CLI::App* command : commands)
        collect_leaves(*command, words + " " + command->get_name(), leaves);
}

// The part of the footer before the examples, or after their heading.
std::string notes(const CLI::App& command) {
    const std::string footer = command.get_footer();
    return footer.substr(0, footer.find(EXAMPLES_HEADING));
}

std::string examples(const CLI::App& command) {
    const std::string footer = command.get_footer();
    const size_t heading = footer.find(EXAMPLES_HEADING);
    return heading == std::string::npos
               ? ""
               : footer.substr(footer.find_first_not_of(
                     '\n', heading + std::char_traits<char>::length(EXAMPLES_HEADING)));
}

void append_literal(std::string& page, const std::string& text) {
    page += ".nf\n";
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        page += (line.empty() ? ".sp" : escaped(line)) + "\n";
    page += ".fi\n";
}

} // namespace

std::string manual_page(const CLI::App& app) {
    const std::string& name = app.get_name();
    std::vector<Leaf> leaves;
    collect_leaves(app, name, leaves);

    std::string page = ".TH TARQUIL 1 \"\" \"" + escaped(app.version()) + "\" \"User Commands\"\n";
    page +=
        ".SH NAME\n" + name + " \\- " + escaped(app.get_description()) + "\n.SH SYNOPSIS\n.nf\n";
    for (const Leaf& leaf : leaves)
        page += bold(leaf.words) + " " + usage(*leaf.command) + "\n";
    page += ".fi\n.SH OPTIONS\n";
    append_options(page, app);
    page += ".SH COMMANDS\n";
    for (const Leaf& leaf : leaves) {
        page += ".SS " + bold(leaf.words) + "\n" + escaped(leaf.command->get_description()) + ".\n";
        append_options(page, *leaf.command);
        if (!notes(*leaf.command).empty()) {
            page += ".PP\n";
            append_literal(page, notes(*leaf.command));
        }
    }
    page += ".SH EXAMPLES\n";
    for (const Leaf& leaf : leaves) {
        if (!examples(*leaf.command).empty()) {
            append_literal(page, examples(*leaf.command));
            page += ".PP\n";
        }
    }
    return page + CLOSING;
}

void add_manual_command(CLI::App& app, int results) {
    CLI::App* command = app.add_subcommand("manual", "Print the manual page");
    command->group("");
    command->callback([&app, results] { write_result(results, manual_page(app)); });
}

} // namespace tarquil
