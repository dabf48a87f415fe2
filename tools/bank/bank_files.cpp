// The files that a bank is taken apart into.

#include "tools/bank/bank_files.h"

#include <charconv>
#include <filesystem>
#include <system_error>

#include "common/load_string.h"
#include "common/platform/atomic_file.h"
#include "common/utf8.h"
#include "instrument/controller_bytes.h"
#include "instrument/names.h"
#include "instrument/text_error.h"
#include "tools/bank_error.h"
#include "tools/failure.h"
#include "tools/notice.h"

namespace tarquil {

namespace {

constexpr const char* STANDARD_INPUT = "/dev/stdin";
constexpr const char* TITLE_KEY = "song_title";
constexpr const char* AUTHOR_KEY = "song_author";
constexpr std::string_view EXTENSION = ".tqi";

// Bytes of an instrument's name in a file name, which systems limit to 255.
constexpr size_t MAX_NAME_LENGTH = 200;

// The file's text once it is known to have no broken line.
std::string read_text(const std::string& path) {
    std::string text;
    const bool standard_input = path == "-";
    const int error = load_file_to_string(standard_input ? STANDARD_INPUT : path, text);
    const std::string reason = error != 0 ? explain_file_error(error) : explain_broken_line(text);
    if (!reason.empty())
        throw BadInput((standard_input ? "standard input" : path) + ": " + reason);
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
    instrument.load_from_string(read_text(path), &report);
    return instrument;
}

void load_globals_file(TarqSettings& bank, const std::string& path, LoadReport& report) {
    TextFileReader reader;
    reader.load_from_string(read_text(path));
    ControllerBytes bytes = default_controller_bytes();
    read_controllers(reader, global_controller_rows(), bytes, &report);
    for (const ControllerInfo& info : global_controller_rows())
        bank.set_global_controller(info.number, bytes[info.number]);
    std::string title;
    std::string author;
    reader.get_str(TITLE_KEY, title);
    reader.get_str(AUTHOR_KEY, author);
    bank.set_song_title(without_lone_blanks(title));
    bank.set_song_author(without_lone_blanks(author));
}

std::string globals_text(const TarqSettings& bank) {
    ControllerBytes bytes{};
    for (const ControllerInfo& info : global_controller_rows())
        bytes[info.number] = uint8_t(bank.get_global_controller(info.number));
    TextFileMemoryWriter writer;
    write_controllers(writer, global_controller_rows(), bytes);
    writer.write_str(TITLE_KEY, bank.get_song_title());
    writer.write_str(AUTHOR_KEY, bank.get_song_author());
    return writer.get_string();
}

std::string instrument_file_name(unsigned number, std::string_view name) {
    std::string text = std::to_string(number);
    text.insert(0, 3 - text.size(), '0');
    text += '-';
    for (const char c : utf8_prefix(name, MAX_NAME_LENGTH))
        text += uint8_t(c) < ' ' || c == '/' || c == '\x7f' ? '_' : c;
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
