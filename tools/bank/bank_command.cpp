// `tarquil bank`: banks read, taken apart and put together.

#include <filesystem>

#include "common/failure.h"
#include "sounds/shipped_sounds.h"
#include "tools/bank/bank_files.h"
#include "tools/bank/bank_list.h"
#include "tools/bank/bank_parts.h"
#include "tools/bank/bank_show.h"
#include "tools/bank_error.h"
#include "tools/command.h"
#include "tools/notice.h"
#include "tools/write_result.h"

namespace tarquil {

namespace {

constexpr const char* BANK_HELP = "The bank (.tqb), or gm, gm-drums or originals";

// What the options of all the commands below leave behind; each uses some.
struct BankOptions {
    std::string bank;
    std::optional<unsigned> number;
    std::string file; // or folder
    std::string output;
    bool all = false;
    bool globals = false;
    bool json = false;
    bool force = false;
    std::optional<std::string> name;
    NewBank parts;
};

using SharedBankOptions = std::shared_ptr<BankOptions>;

// The bank that the command reads, with a line about what it lacks.
std::unique_ptr<TarqSettings> load_bank(const BankOptions& options) {
    LoadReport report;
    std::unique_ptr<TarqSettings> bank = load_bank_file(options.bank, report);
    print_load_summary(report);
    return bank;
}

CLI::Option* add_number(CLI::App& command, const SharedBankOptions& options) {
    return command.add_option("N", options->number, "The instrument's number, 0 to 127")
        ->check(CLI::Range(0U, MAX_INSTRUMENTS - 1));
}

CLI::App* add_bank_command(CLI::App& bank, const char* name, const char* help,
                           const SharedBankOptions& options) {
    CLI::App* command = bank.add_subcommand(name, help);
    command->add_option("BANK", options->bank, BANK_HELP)->required();
    return command;
}

void add_list(CLI::App& bank, int results) {
    const auto options = std::make_shared<BankOptions>();
    CLI::App* command = add_bank_command(bank, "list", "List the instruments of a bank", options);
    command->add_flag("--all", options->all, "Also list the instruments that are the default");
    command->add_flag("--json", options->json, "Print JSON");
    command->footer("Examples:\n"
                    "  tarquil bank list song.tqb\n"
                    "  tarquil bank list gm\n"
                    "  tarquil bank list --all --json song.tqb");
    command->callback([=] {
        write_result(results, list_bank(*load_bank(*options), {options->all, options->json}));
    });
}

void show(const BankOptions& options, int results) {
    if (options.number.has_value() == options.globals)
        throw BadInput("bank show: either an instrument's number or --globals is needed");
    const std::unique_ptr<TarqSettings> bank = load_bank(options);
    write_result(results, options.globals ? show_globals(*bank, options.json)
                                          : show_instrument(*bank, *options.number, options.json));
}

void add_show(CLI::App& bank, int results) {
    const auto options = std::make_shared<BankOptions>();
    CLI::App* command = add_bank_command(
        bank, "show", "Show controllers: key, value in the file, byte, value with unit", options);
    add_number(*command, options);
    command->add_flag("--globals", options->globals, "Show the global controllers");
    command->add_flag("--json", options->json, "Print JSON");
    command->footer("Examples:\n"
                    "  tarquil bank show song.tqb 12\n"
                    "  tarquil bank show song.tqb --globals --json");
    command->callback([=] { show(*options, results); });
}

void extract(const BankOptions& options, int results) {
    if (options.number.has_value() == !options.output.empty())
        throw BadInput("bank extract: either an instrument's number or --all is needed");
    const std::unique_ptr<TarqSettings> bank = load_bank(options);
    if (!options.output.empty()) {
        extract_all(*bank, options.output);
        return;
    }
    const std::string text = bank->get_instrument(*options.number).save_to_string();
    if (options.file == "-")
        write_result(results, text);
    else
        save_file(options.file, text);
}

void add_extract(CLI::App& bank, int results) {
    const auto options = std::make_shared<BankOptions>();
    options->file = "-";
    CLI::App* command =
        add_bank_command(bank, "extract", "Write instruments of a bank into files", options);
    add_number(*command, options);
    command->add_option("FILE", options->file, "The instrument file (.tqi); - is standard output");
    command
        ->add_option("--all", options->output,
                     "Write every instrument and the globals into this new or empty folder")
        ->type_name("DIR");
    command->footer("Examples:\n"
                    "  tarquil bank extract song.tqb 12 bass.tqi\n"
                    "  tarquil bank extract song.tqb 12 | grep filter1\n"
                    "  tarquil bank extract song.tqb --all song/");
    command->callback([=] { extract(*options, results); });
}

void insert(const BankOptions& options) {
    if (options.output.empty() && find_shipped_bank(options.bank) != nullptr)
        throw BadInput(options.bank + ": comes with the program; name a file with --output");
    LoadReport report;
    const std::unique_ptr<TarqSettings> bank = load_bank_file(options.bank, report);
    insert_instrument(*bank, {*options.number, options.file, options.name}, report);
    save_bank_file(*bank, options.output.empty() ? options.bank : options.output);
    print_load_summary(report);
}

void add_insert(CLI::App& bank) {
    const auto options = std::make_shared<BankOptions>();
    CLI::App* command =
        add_bank_command(bank, "insert", "Replace an instrument of a bank by a file", options);
    add_number(*command, options)->required();
    command
        ->add_option("FILE", options->file,
                     "The instrument file (.tqi); keys that it lacks take their defaults; - is "
                     "standard input")
        ->required();
    command->add_option("--name", options->name, "Name the instrument")->type_name("NAME");
    command->add_option("--output", options->output, "Write the bank here instead of over BANK")
        ->type_name("FILE");
    command->footer("Examples:\n"
                    "  tarquil bank insert song.tqb 12 bass.tqi\n"
                    "  tarquil bank extract song.tqb 12 | sed s/^osc1_type.*/osc1_type=1/ |\n"
                    "      tarquil bank insert song.tqb 13 - --name sine_bass");
    command->callback([=] { insert(*options); });
}

void make(const BankOptions& options) {
    if (!options.force && std::filesystem::exists(options.bank))
        throw BadInput(options.bank + ": is there already; --force overwrites it");
    LoadReport report;
    const std::unique_ptr<TarqSettings> bank = make_bank(options.parts, report);
    save_bank_file(*bank, options.bank);
    print_load_summary(report);
}

void add_new(CLI::App& bank) {
    const auto options = std::make_shared<BankOptions>();
    NewBank& parts = options->parts;
    CLI::App* command =
        bank.add_subcommand("new", "Make a bank of default instruments with what is given put in");
    command->add_option("BANK", options->bank, "The file (.tqb)")->required();
    command->add_option("PART", parts.parts,
                        "Instruments: N=FILE.tqi, or a folder as extract --all makes it");
    command->add_option("--title", parts.title, "The song's title")->type_name("TEXT");
    command->add_option("--author", parts.author, "The song's author")->type_name("TEXT");
    command
        ->add_option("--globals", parts.globals,
                     "Global controllers, title and author from this file or bank")
        ->type_name("FILE");
    command->add_flag("--force", options->force, "Overwrite a bank that is there");
    command->footer("Examples:\n"
                    "  tarquil bank new song.tqb song/\n"
                    "  tarquil bank new song.tqb --title Dawn 0=pad.tqi 9=drums.tqi");
    command->callback([=] { make(*options); });
}

} // namespace

void add_bank_command(CLI::App& app, int results) {
    CLI::App* bank = app.add_subcommand("bank", "Read a bank, take it apart or put it together");
    bank->require_subcommand(1);
    add_list(*bank, results);
    add_show(*bank, results);
    add_extract(*bank, results);
    add_insert(*bank);
    add_new(*bank);
}

} // namespace tarquil
