// `tarquil bank`: banks read, taken apart and put together.

#include "tools/bank/bank_list.h"
#include "tools/bank_error.h"
#include "tools/command.h"
#include "tools/write_result.h"

namespace {

void add_list(CLI::App& bank, int results) {
    CLI::App* command = bank.add_subcommand("list", "List the instruments of a bank");
    const auto path = std::make_shared<std::string>();
    const auto options = std::make_shared<BankListOptions>();
    command->add_option("BANK", *path, "The bank (.tqb)")->required();
    command->add_flag("--all", options->all, "Also list the instruments that are the default");
    command->add_flag("--json", options->json, "Print JSON");
    command->footer("Examples:\n"
                    "  tarquil bank list song.tqb\n"
                    "  tarquil bank list --all --json song.tqb");
    command->callback([=] { write_result(results, list_bank(*load_bank_file(*path), *options)); });
}

} // namespace

void add_bank_command(CLI::App& app, int results) {
    CLI::App* bank = app.add_subcommand("bank", "Read a bank, take it apart or put it together");
    bank->require_subcommand(1);
    add_list(*bank, results);
}
