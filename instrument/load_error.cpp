// Why a bank or an instrument cannot be loaded.

#include "instrument/load_error.h"

#include <string_view>

#include "common/load_string.h"
#include "instrument/packed_text.h"
#include "instrument/settings.h"
#include "instrument/text_error.h"
#include "instrument/text_file_reader.h"
#include "instrument/text_kind.h"
#include "instrument/text_source.h"

namespace tarquil {

namespace {

// Position of the first pair of digits in `hex`, counted from 1, that is none.
size_t bad_hex_position(std::string_view hex) {
    std::string ignored;
    size_t position = 0;
    while (position + 1 < hex.size() && hex2str(hex.substr(position, 2), ignored) == 0)
        position += 2;
    return position + 1;
}

std::string explain_embedded(std::string_view hex) {
    std::string text;
    switch (hex2str(hex, text)) {
    case 0:
        return explain_broken_line(text);
    case ODD_HEX_LENGTH:
        return "an odd number of hex digits";
    default:
        return "not a hex digit at character " + std::to_string(bad_hex_position(hex));
    }
}

std::string explain_packed(const std::string& name) {
    std::string text;
    return load_text_source(name, text) != 0 ? "packed wrongly" : explain_broken_line(text);
}

std::string explain_linked(const std::string& filename) {
    std::string text;
    const int error = load_regular_file_to_string(filename, text);
    const std::string reason = error != 0 ? explain_file_error(error) : explain_broken_line(text);
    return reason.empty() ? reason : filename + ": " + reason;
}

// Empty when nothing is wrong with the instrument.
std::string explain_instrument(const TextFileReader& bank, const std::string& key) {
    std::string filename;
    if (!bank.get_str(key, filename)) {
        const std::string reason = explain_linked(DEFAULT_INSTRUMENT_FILE);
        return reason.empty() ? reason : "not in the bank, and " + reason;
    }
    if (filename.starts_with(EMBEDDED_PREFIX))
        return explain_embedded(std::string_view(filename).substr(EMBEDDED_PREFIX.size()));
    if (filename.starts_with(PACKED_PREFIX))
        return explain_packed(filename);
    Instrument instrument;
    instrument.set_filename(filename);
    return explain_linked(instrument.get_filename());
}

// A bank's key with what is wrong with the instrument behind it.
std::string explain_instruments(std::string_view text) {
    TextFileReader bank;
    bank.load_from_string(text);
    for (unsigned i = 0; i < MAX_INSTRUMENTS; i++) {
        const std::string key = instrument_key(i);
        const std::string reason = explain_instrument(bank, key);
        if (!reason.empty())
            return std::string(key).append(": ").append(reason);
    }
    return "";
}

std::string with_path(const std::string& path, int code, const std::string& reason) {
    return path + ": " + (reason.empty() ? "error " + std::to_string(code) : reason);
}

} // namespace

std::string explain_bank_text(int code, std::string_view text) {
    if (code == WRONG_KIND)
        return explain_wrong_kind(TextKind::BANK, text);
    if (code == NEWER_VERSION)
        return "was saved by a later version";
    std::string broken = explain_broken_line(text);
    return broken.empty() ? explain_instruments(text) : broken;
}

std::string explain_instrument_text(int code, std::string_view text) {
    return code == WRONG_KIND ? explain_wrong_kind(TextKind::INSTRUMENT, text)
                              : explain_broken_line(text);
}

std::string explain_bank_error(const std::string& path, int code) {
    std::string text;
    const int error = load_file_to_string(path, text);
    return with_path(path, code,
                     error != 0 ? explain_file_error(error) : explain_bank_text(code, text));
}

std::string explain_instrument_error(const std::string& path, int code) {
    std::string text;
    const int error = load_regular_file_to_string(path, text);
    return with_path(path, code,
                     error != 0 ? explain_file_error(error) : explain_instrument_text(code, text));
}

} // namespace tarquil
