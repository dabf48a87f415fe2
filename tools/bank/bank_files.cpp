// The files that a bank is taken apart into.

#include "tools/bank/bank_files.h"

#include <charconv>
#include <filesystem>
#include <system_error>

#include "common/characters.h"
#include "common/failure.h"
#include "common/load_string.h"
#include "common/platform/atomic_file.h"
#include "common/utf8.h"
#include "instrument/load_error.h"
#include "instrument/names.h"
#include "instrument/text_error.h"
#include "instrument/text_kind.h"
#include "tools/bank_error.h"
#include "tools/notice.h"

namespace tarquil {

namespace {

constexpr const char* STANDARD_INPUT = "/dev/stdin";
constexpr std::string_view EXTENSION = ".tqi";

// Bytes of an instrument's name in a file name, which systems limit to 255.
constexpr size_t MAX_NAME_LENGTH = 200;

// What messages call the file.
std::string shown_name(const std::string& path) {
    return path == "-" ? "standard input" : path;
}

std::string read_text(const std::string& path) {
    std::string text;
    const int error = load_file_to_string(path == "-" ? STANDARD_INPUT : path, text);
    if (error != 0)
        throw BadInput(shown_name(path) + ": " + explain_file_error(error));
    return text;
}

bool is_instrument_file_name(std::string_view name) {
    return name.ends_with(EXTENSION) && name.front() >= '0' && name.front() <= '9';
}

// The number that the file name starts with.
unsigned number_of_file_name(const std::string& directory, const std::string& name) {
    unsigned number = 0;
    const std::from_chars_result end =
        std::from_chars(name.data(), name.data() + name.size(), number);
    if (end.ec != std::errc{} || number >= MAX_INSTRUMENTS)
        throw BadInput(directory + ": " + name + ": instrument numbers go from 0 to 127");
    return number;
}

} // namespace

Instrument load_instrument_file(const std::string& path, const std::string& name,
                                LoadReport& report) {
    Instrument instrument;
    instrument.set_name(name);
    const std::string text = read_text(path);
    const int error = is_text_of(TextKind::INSTRUMENT, text)
                          ? instrument.load_from_string(text, &report)
                          : WRONG_KIND;
    if (error != 0)
        throw BadInput(shown_name(path) + ": " + explain_instrument_text(error, text));
    return instrument;
}

void load_globals_file(TarqSettings& bank, const std::string& path, LoadReport& report) {
    const std::string text = read_text(path);
    const int error = is_text_of(TextKind::BANK, text)
                          ? bank.load_globals_from_string(text, &report)
                          : WRONG_KIND;
    if (error != 0)
        throw BadInput(path + ": " + explain_bank_text(error, text));
    remove_lone_blanks(bank);
}

std::string instrument_file_name(unsigned number, std::string_view name) {
    std::string text = std::to_string(number);
    text.insert(0, 3 - text.size(), '0');
    text += '-';
    for (const char c : utf8_prefix(name, MAX_NAME_LENGTH))
        text += is_control(c) || c == '/' ? '_' : c;
    return text.append(EXTENSION);
}

std::map<unsigned, std::string> find_instrument_files(const std::string& directory) {
    std::map<unsigned, std::string> files;
    std::error_code error;
    std::filesystem::directory_iterator entry(directory, error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        const std::string name = entry->path().filename();
        if (!is_instrument_file_name(name))
            continue;
        const unsigned number = number_of_file_name(directory, name);
        if (!files.emplace(number, entry->path()).second)
            throw BadInput(directory + ": two files for instrument " + std::to_string(number));
    }
    if (error)
        throw BadInput(directory + ": " + error.message());
    return files;
}

void save_file(const std::string& path, std::string_view text) {
    AtomicFile file;
    if (!file.open(path))
        throw BadInput(path + ": cannot be opened for writing");
    if (file.is_in_place())
        print_notice(in_place_warning(path));
    if (!file.commit(text))
        throw Failure(STATUS_CANNOT, path + ": cannot be written");
}

void save_bank_file(const TarqSettings& bank, const std::string& path) {
    std::string text;
    bank.text_save_to_string(text);
    save_file(path, text);
}

} // namespace tarquil
