// A whole bank.

#include "instrument/settings.h"

#include "common/assertion.h"
#include "common/load_string.h"

namespace tarquil {

namespace {

constexpr const char* MIDI_KEY = "midi";
constexpr const char* GENERAL_MIDI = "gm";

std::string instrument_key(unsigned number) {
    return "instrument" + std::to_string(number);
}

} // namespace

TarqSettings::TarqSettings() {
    load_default();
}

Instrument& TarqSettings::get_instrument(unsigned number) {
    TARQ_ASSERT(number < MAX_INSTRUMENTS);
    return instruments[number];
}

const Instrument& TarqSettings::get_instrument(unsigned number) const {
    TARQ_ASSERT(number < MAX_INSTRUMENTS);
    return instruments[number];
}

void TarqSettings::load_default() {
    for (Instrument& instrument : instruments)
        instrument.load_default();
    bytes = default_controller_bytes();
    song_title.clear();
    song_author.clear();
    general_midi = false;
}

int TarqSettings::text_load(const std::string& path, LoadReport* report) {
    std::string text;
    const int error = load_file_to_string(path, text);
    return error != 0 ? error : text_load_from_string(text, report);
}

int TarqSettings::text_load_from_string(std::string_view text, LoadReport* report) {
    TextFileReader reader;
    const int parse_error = reader.load_from_string(text);
    if (parse_error != 0)
        return parse_error;
    load_default();
    read_controllers(reader, global_controller_rows(), bytes, report);
    for (unsigned i = 0; i < MAX_INSTRUMENTS; i++) {
        std::string filename = DEFAULT_INSTRUMENT_FILE;
        reader.get_str(instrument_key(i), filename);
        instruments[i].set_filename(filename);
        if (report != nullptr)
            report->place = instrument_key(i) + ": ";
        const int error = instruments[i].text_load(report);
        if (report != nullptr)
            report->place.clear();
        if (error != 0)
            return error;
    }
    reader.get_str("song_title", song_title);
    reader.get_str("song_author", song_author);
    std::string dialect;
    general_midi = reader.get_str(MIDI_KEY, dialect) && dialect == GENERAL_MIDI;
    return 0;
}

int TarqSettings::text_save(const std::string& path) const {
    std::string text;
    text_save_to_string(text);
    return save_file_to_string(path, text);
}

int TarqSettings::text_save_to_string(std::string& out) const {
    TextFileMemoryWriter writer;
    write_controllers(writer, global_controller_rows(), bytes);
    for (unsigned i = 0; i < MAX_INSTRUMENTS; i++)
        writer.write_str(instrument_key(i),
                         std::string(EMBEDDED_PREFIX) + str2hex(instruments[i].save_to_string()));
    writer.write_str("song_title", song_title);
    writer.write_str("song_author", song_author);
    if (general_midi) // other banks stay what older versions write
        writer.write_str(MIDI_KEY, GENERAL_MIDI);
    out = writer.get_string();
    return 0;
}

unsigned TarqSettings::emit_global_controllers(midi_event* out, uint32_t time,
                                               unsigned capacity) const {
    unsigned count = 0;
    for (unsigned number = 0; number < NUM_CONTROLLERS && count < capacity; number++) {
        if (is_global_controller(number))
            count += emit_single_global_controller(out + count, number, time);
    }
    return count;
}

unsigned TarqSettings::emit_single_global_controller(midi_event* out, unsigned num,
                                                     uint32_t time) const {
    TARQ_ASSERT(is_global_controller(num));
    *out = {time, midi_status(MIDI_CONTROL_CHANGE, 0), uint8_t(num), bytes[num]};
    return 1;
}

} // namespace tarquil
