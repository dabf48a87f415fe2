// `tarquil map`: looks General MIDI sets over.

#include <memory>
#include <string>

#include "tools/command.h"
#include "tools/map/map_list.h"
#include "tools/render/gm_set.h"
#include "tools/write_result.h"

namespace tarquil {

namespace {

std::unique_ptr<GmSet> load_set(const std::string& path) {
    auto set = std::make_unique<GmSet>();
    TarqSettings melodic;
    load_gm_set(path, *set, melodic);
    return set;
}

using Show = std::string (*)(const std::string& path, const GmMap& map);

std::string describe(const std::string& path, const GmMap& map) {
    return path + ": " + map_summary(map) + "\n";
}

std::string list(const std::string& /*path*/, const GmMap& map) {
    return list_map(map);
}

void add_part(CLI::App& command, const char* name, const char* help, Show show, int results) {
    CLI::App* part = command.add_subcommand(name, help);
    const auto path = std::make_shared<std::string>();
    part->add_option("MAP", *path, "The map (.tqm)")->required();
    part->callback(
        [path, show, results] { write_result(results, show(*path, load_set(*path)->map)); });
}

} // namespace

void add_map_command(CLI::App& app, int results) {
    CLI::App* command = app.add_subcommand("map", "Look over General MIDI sets");
    command->require_subcommand(1);
    add_part(*command, "check",
             "Load a map and its banks; say what is wrong with them, or what there is", describe,
             results);
    add_part(*command, "list", "List a map's laws and drums", list, results);
}

} // namespace tarquil
