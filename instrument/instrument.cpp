// One channel's complete sound.

#include "instrument/instrument.h"

#include <algorithm>

#include "common/assertion.h"
#include "common/characters.h"
#include "common/utf8.h"
#include "instrument/keys.h"
#include "instrument/packed_text.h"
#include "instrument/storable_text.h"
#include "instrument/text_error.h"
#include "instrument/text_file_writer.h"
#include "instrument/text_lines.h"
#include "instrument/text_source.h"

namespace tarquil {

namespace {

constexpr int DEFAULT_FILE_NOT_SAVED = 15;

// An instrument's array also has bytes for the global controllers.  They are never saved or
// emitted, and their resonances start where a channel filter's does, not where the bank's do.
const ControllerBytes& instrument_defaults() {
    static const ControllerBytes defaults = [] {
        ControllerBytes bytes = default_controller_bytes();
        constexpr unsigned STRIDE = CTRL_GLOBAL_FILTER2_RESONANCE - CTRL_GLOBAL_FILTER1_RESONANCE;
        for (unsigned number = CTRL_GLOBAL_FILTER1_RESONANCE;
             number <= CTRL_GLOBAL_FILTER6_RESONANCE; number += STRIDE)
            bytes[number] = bytes[CTRL_CHAN_FILTER1_RESONANCE];
        return bytes;
    }();
    return defaults;
}

// By InstrumentText.
constexpr std::string_view TEXT_KEYS[] = {"author", "category", "tags", "comment"};

bool is_text_key(std::string_view key) {
    return std::find(std::begin(TEXT_KEYS), std::end(TEXT_KEYS), key) != std::end(TEXT_KEYS);
}

std::string_view cut_text(const std::string& text) {
    return utf8_prefix(text, Instrument::MAX_TEXT_BYTES);
}

void take_other_line(KeptLines& lines, const TextPair& line, LoadReport* report) {
    if (is_text_key(line.key)) {
        if (lines.get(line.key).empty())
            lines.set(line.key, cut_text(storable_text(line.value)));
        return;
    }
    if (is_indented_key_of(TextKind::INSTRUMENT, line.key))
        report_warning(report, "\"" + std::string(line.key) + "\" is indented and not read");
    if (!lines.keep(line.key, line.value))
        report_warning(report, "more unknown lines than are kept");
}

} // namespace

Instrument::Instrument() : filename(std::make_shared<const std::string>()) {
    load_default();
}

void Instrument::load_default() {
    bytes = instrument_defaults();
    kept_lines.clear();
}

int Instrument::text_load(const std::string& path, LoadReport* report, MissingKeys missing) {
    std::string text;
    const int error = load_text_source(path, text);
    return error != 0 ? error : load_from_string(text, report, missing);
}

int Instrument::load_from_string(std::string_view text, LoadReport* report, MissingKeys missing) {
    ControllerValues values(channel_controller_rows());
    std::string_view new_name;
    KeptLines others;
    for (TextLines lines(text); lines.next();) {
        const TextPair line = parse_line(lines.line());
        if (line.kind == LineKind::BROKEN)
            return broken_line(lines);
        if (line.kind == LineKind::BLANK || values.take(line.key, line.value))
            continue;
        if (line.key != NAME_KEY)
            take_other_line(others, line, report);
        else if (new_name.empty())
            new_name = line.value;
    }
    set_name(new_name.empty() ? std::string_view(name) : new_name);
    load_default();
    values.apply(bytes, missing, report);
    kept_lines = std::move(others);
    return 0;
}

int Instrument::text_save() const {
    TextFileWriter writer;
    if (writer.open(get_filename()))
        return CANNOT_OPEN;
    if (get_filename() == DEFAULT_INSTRUMENT_FILE)
        return DEFAULT_FILE_NOT_SAVED;
    write(writer);
    return writer.close();
}

std::string Instrument::save_to_string() const {
    TextFileMemoryWriter writer;
    write(writer);
    return writer.take_string();
}

std::string Instrument::save_changes_to_string() const {
    TextFileMemoryWriter writer;
    if (!name.empty())
        writer.write_str(NAME_KEY, name);
    write_changed_controllers(writer, channel_controller_rows(), bytes, instrument_defaults());
    kept_lines.write(writer);
    return writer.take_string();
}

std::string Instrument::save_changes_packed() const {
    TextFileMemoryWriter writer;
    if (!name.empty())
        writer.write_str(NAME_KEY, name);
    kept_lines.write(writer);
    return std::string(PACKED_PREFIX) +
           pack_text(bytes, instrument_defaults(), writer.take_string());
}

void Instrument::write(TextFileMemoryWriter& writer) const {
    writer.write_str(NAME_KEY, name);
    write_controllers(writer, channel_controller_rows(), bytes);
    kept_lines.write(writer);
}

void Instrument::set_name(std::string_view new_name) {
    name = new_name;
    std::replace_if(name.begin(), name.end(), is_white_space, '_');
}

void Instrument::set_filename(std::string_view path) {
    std::string stored(path);
    const size_t first_slash = stored.find('/'); // quick where there is none
    if (first_slash != std::string::npos)
        std::replace_if(stored.begin() + ptrdiff_t(stored.rfind('/')), stored.end(), is_white_space,
                        '_');
    filename = std::make_shared<const std::string>(std::move(stored));
}

void Instrument::set_text(InstrumentText which, std::string_view text) {
    kept_lines.set(TEXT_KEYS[unsigned(which)], cut_text(storable_text(text)));
}

std::string_view Instrument::get_text(InstrumentText which) const {
    return kept_lines.get(TEXT_KEYS[unsigned(which)]);
}

int Instrument::get_controller(unsigned controller) const {
    TARQ_ASSERT(controller < NUM_CONTROLLERS);
    return bytes[controller];
}

void Instrument::set_controller(unsigned controller, int val) {
    TARQ_ASSERT(controller < NUM_CONTROLLERS);
    TARQ_ASSERT(val < 128);
    TARQ_ASSERT(val >= 0);
    bytes[controller] = uint8_t(val);
}

unsigned Instrument::emit_program_change(midi_event* out, unsigned channel, uint32_t time,
                                         unsigned capacity) const {
    if (capacity < NUM_CONTROLLERS)
        return 0;
    unsigned count = 0;
    for (unsigned number = 0; number < NUM_CONTROLLERS; number++) {
        if (!is_global_controller(number))
            count += emit_single_controller(out + count, channel, number, time);
    }
    return count;
}

unsigned Instrument::emit_single_controller(midi_event* out, unsigned channel, unsigned controller,
                                            uint32_t time) const {
    *out = {time, midi_status(MIDI_CONTROL_CHANGE, channel), uint8_t(controller),
            uint8_t(get_controller(controller))};
    return 1;
}

} // namespace tarquil
