// The command line program as a function.

#include "tools/command_line.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "common/failure.h"
#include "tools/command.h"
#include "tools/write_result.h"

namespace tarquil {

namespace {

// Parsing errors may have several lines; everything that fails prints one.
int fail(ExitStatus status, std::string message) {
    while (!message.empty() && message.back() == '\n')
        message.pop_back();
    std::replace(message.begin(), message.end(), '\n', ' ');
    if (!message.starts_with("tarquil: "))
        message.insert(0, "tarquil: ");
    std::fprintf(stderr, "%s\n", message.c_str());
    return status;
}

} // namespace

std::unique_ptr<CLI::App> make_command_line(int results) {
    auto app = std::make_unique<CLI::App>("Multi-timbral software synthesizer", "tarquil");
    app->set_version_flag("--version", "tarquil " TARQUIL_VERSION, "Print the version and exit");
    app->require_subcommand(1);
    app->get_formatter()->column_width(34);
    add_render_command(*app, results);
    add_play_command(*app, results);
    add_bank_command(*app, results);
    add_map_command(*app, results);
    add_plot_command(*app, results);
    add_parameters_command(*app, results);
    add_speech_command(*app, results);
    add_completion_command(*app, results);
    add_manual_command(*app, results);
    return app;
}

int run_command_line(int argc, const char* const* argv, int results) {
    const std::unique_ptr<CLI::App> app = make_command_line(results);
    try {
        try {
            app->parse(argc, argv);
        } catch (const CLI::CallForHelp&) {
            write_result(results, app->help());
        } catch (const CLI::CallForVersion& version) {
            write_result(results, std::string(version.what()) + "\n");
        }
    } catch (const CLI::RequiredError& error) {
        // A misspelt command is reported as no command.
        const std::vector<std::string> unknown = app->remaining(true);
        return fail(STATUS_BAD_INPUT,
                    unknown.empty() ? error.what() : "unknown command " + unknown.front());
    } catch (const CLI::ParseError& error) {
        return fail(STATUS_BAD_INPUT, error.what());
    } catch (const Failure& failure) {
        return fail(failure.get_status(), failure.what());
    } catch (const std::exception& error) {
        return fail(STATUS_CANNOT, error.what());
    }
    return STATUS_DONE;
}

} // namespace tarquil
