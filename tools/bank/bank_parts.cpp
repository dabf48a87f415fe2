// What `tarquil bank` does with the parts of a bank.

#include "tools/bank/bank_parts.h"

#include <charconv>
#include <filesystem>
#include <map>
#include <system_error>

#include "common/failure.h"
#include "instrument/names.h"
#include "tools/bank/bank_files.h"
#include "tools/bank_error.h"

namespace tarquil {

namespace {

// The text format can not hold these: they end the value.
void check_text(const std::string& what, const std::string& text) {
    if (text.find_first_of(std::string_view("\r\n#\0", 4)) != std::string::npos)
        throw BadInput(what + ": must not hold line breaks, \"#\" or the character 0");
}

// An instrument number 0..127 and a file, when `part` starts with digits and "=".
std::optional<std::pair<unsigned, std::string>> split_part(const std::string& part) {
    const size_t equals = part.find_first_not_of("0123456789");
    if (equals == 0 || equals == std::string::npos || part[equals] != '=')
        return std::nullopt;
    unsigned number = 0;
    const std::from_chars_result end = std::from_chars(part.data(), part.data() + equals, number);
    if (end.ec != std::errc{} || number >= MAX_INSTRUMENTS)
        throw BadInput(part + ": instrument numbers go from 0 to 127");
    return std::pair(number, part.substr(equals + 1));
}

struct Parts {
    std::map<unsigned, std::string> instruments; // files by number
    std::string globals;
};

void add_file(Parts& parts, unsigned number, const std::string& file) {
    if (!parts.instruments.emplace(number, file).second)
        throw BadInput(file + ": instrument " + std::to_string(number) + " is given twice");
}

Parts find_parts(const NewBank& request) {
    Parts parts;
    for (const std::string& part : request.parts) {
        if (const auto file = split_part(part)) {
            add_file(parts, file->first, file->second);
            continue;
        }
        for (const auto& [number, path] : find_instrument_files(part))
            add_file(parts, number, path);
        const std::filesystem::path globals = std::filesystem::path(part) / GLOBALS_FILE;
        if (std::filesystem::exists(globals))
            parts.globals = globals;
    }
    if (!request.globals.empty())
        parts.globals = request.globals;
    return parts;
}

} // namespace

void extract_all(const TarqSettings& bank, const std::string& directory) {
    std::error_code error;
    std::filesystem::create_directory(directory, error);
    const bool empty = !error && std::filesystem::is_empty(directory, error);
    if (error)
        throw BadInput(directory + ": " + error.message());
    if (!empty)
        throw BadInput(directory + ": the folder is not empty");
    const std::filesystem::path folder(directory);
    for (unsigned i = 0; i < MAX_INSTRUMENTS; i++) {
        const Instrument& instrument = bank.get_instrument(i);
        save_file(folder / instrument_file_name(i, instrument.get_name()),
                  instrument.save_to_string());
    }
    save_file(folder / GLOBALS_FILE, bank.globals_to_string());
}

void insert_instrument(TarqSettings& bank, const BankInsertion& insertion, LoadReport& report) {
    Instrument instrument =
        load_instrument_file(insertion.file, default_instrument_name(insertion.number), report);
    if (insertion.name) {
        check_text("--name", *insertion.name);
        instrument.set_name(*insertion.name);
    }
    bank.get_instrument(insertion.number) = instrument;
}

std::unique_ptr<TarqSettings> make_bank(const NewBank& request, LoadReport& report) {
    auto bank = std::make_unique<TarqSettings>();
    set_default_names(*bank);
    const Parts parts = find_parts(request);
    if (!parts.globals.empty())
        load_globals_file(*bank, parts.globals, report);
    for (const auto& [number, file] : parts.instruments)
        insert_instrument(*bank, {number, file, std::nullopt}, report);
    if (request.title) {
        check_text("--title", *request.title);
        bank->set_song_title(*request.title);
    }
    if (request.author) {
        check_text("--author", *request.author);
        bank->set_song_author(*request.author);
    }
    return bank;
}

} // namespace tarquil
