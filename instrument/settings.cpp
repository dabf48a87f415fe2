// A whole bank.

#include "instrument/settings.h"

#include "common/assertion.h"
#include "common/load_string.h"
#include "instrument/bank_pairs.h"
#include "instrument/keys.h"
#include "instrument/names.h"
#include "instrument/text_error.h"
#include "instrument/text_source.h"

namespace tarquil {

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
    kept_lines.clear();
}

int TarqSettings::text_load(const std::string& path, LoadReport* report) {
    std::string text;
    const int error = load_file_to_string(path, text);
    return error != 0 ? error : text_load_from_string(text, report);
}

int TarqSettings::text_load_from_string(std::string_view text, LoadReport* report) {
    BankPairs pairs;
    const int parse_error = pairs.read(text, report);
    if (parse_error != 0)
        return parse_error;
    if (!pairs.is_known_version())
        return NEWER_VERSION;
    load_default();
    pairs.globals.apply(bytes, pairs.missing(), report);
    for (unsigned i = 0; i < MAX_INSTRUMENTS; i++) {
        const int error = load_instrument(i, pairs, report);
        if (error != 0)
            return error;
    }
    take_song(pairs);
    return 0;
}

int TarqSettings::load_instrument(unsigned number, const BankPairs& pairs, LoadReport* report) {
    Instrument& instrument = instruments[number];
    const std::string_view source = pairs.sources[number];
    if (pairs.is_compact()) {
        instrument = built_in_instrument(number);
        if (source.empty())
            return 0;
        instrument.set_name("");
    }
    instrument.set_filename(source.empty() ? DEFAULT_INSTRUMENT_FILE : source);
    if (report != nullptr)
        report->place = instrument_key(number) + ": ";
    const int error = instrument.text_load(instrument.get_filename(), report, pairs.missing());
    if (report != nullptr)
        report->place.clear();
    return error;
}

void TarqSettings::take_song(const BankPairs& pairs) {
    song_title = pairs.title;
    song_author = pairs.author;
    kept_lines = pairs.others;
}

int TarqSettings::load_globals_from_string(std::string_view text, LoadReport* report) {
    BankPairs pairs;
    const int parse_error = pairs.read(text, report);
    if (parse_error != 0)
        return parse_error;
    bytes = default_controller_bytes();
    pairs.globals.apply(bytes, pairs.missing(), report);
    take_song(pairs);
    return 0;
}

int TarqSettings::text_save(const std::string& path) const {
    std::string text;
    text_save_to_string(text);
    return save_file_to_string(path, text);
}

int TarqSettings::text_save_to_string(std::string& out) const {
    TextFileMemoryWriter writer(std::move(out));
    write_controllers(writer, global_controller_rows(), bytes);
    for (unsigned i = 0; i < MAX_INSTRUMENTS; i++)
        writer.write_hex(instrument_key(i), EMBEDDED_PREFIX, instruments[i].save_to_string());
    write_song(writer);
    out = writer.take_string();
    return 0;
}

std::string TarqSettings::globals_to_string() const {
    TextFileMemoryWriter writer;
    write_controllers(writer, global_controller_rows(), bytes);
    write_song(writer);
    return writer.take_string();
}

void TarqSettings::write_song(TextFileMemoryWriter& writer) const {
    writer.write_str(SONG_TITLE_KEY, song_title);
    writer.write_str(SONG_AUTHOR_KEY, song_author);
    kept_lines.write(writer);
}

std::string save_state_compact(const TarqSettings& bank) {
    TextFileMemoryWriter writer;
    writer.write_int(STATE_VERSION_KEY, STATE_VERSION);
    write_changed_controllers(writer, global_controller_rows(), bank.bytes,
                              default_controller_bytes());
    for (unsigned i = 0; i < MAX_INSTRUMENTS; i++) {
        const std::string packed = bank.instruments[i].save_changes_packed();
        if (packed != built_in_instrument(i).save_changes_packed())
            writer.write_str(instrument_key(i), packed);
    }
    if (!bank.song_title.empty())
        writer.write_str(SONG_TITLE_KEY, bank.song_title);
    if (!bank.song_author.empty())
        writer.write_str(SONG_AUTHOR_KEY, bank.song_author);
    bank.kept_lines.write(writer);
    return writer.take_string();
}

void TarqSettings::set_midi_dialect(MidiDialect dialect) {
    kept_lines.set(MIDI_KEY, dialect == MidiDialect::GENERAL_MIDI ? GENERAL_MIDI_VALUE : "");
}

MidiDialect TarqSettings::get_midi_dialect() const {
    return kept_lines.get(MIDI_KEY) == GENERAL_MIDI_VALUE ? MidiDialect::GENERAL_MIDI
                                                          : MidiDialect::NATIVE;
}

void TarqSettings::set_tempo_sync(bool is_on) {
    kept_lines.set(TEMPO_SYNC_KEY, is_on ? ON_VALUE : "");
}

bool TarqSettings::get_tempo_sync() const {
    return kept_lines.get(TEMPO_SYNC_KEY) == ON_VALUE;
}

void TarqSettings::set_learned(const LearnedControls& learned) {
    const LearnedControls before = get_learned();
    for (unsigned i = 0; i < NUM_MIDI_CONTROLLERS; i++) {
        const auto& control = learned.get(i);
        if (control != before.get(i))
            kept_lines.set(learn_key(i), control ? learned_text(*control) : "");
    }
}

LearnedControls TarqSettings::get_learned() const {
    LearnedControls learned;
    for (unsigned i = 0; i < NUM_MIDI_CONTROLLERS && !kept_lines.empty(); i++)
        learned.set(i, parse_learned(kept_lines.get(learn_key(i))));
    return learned;
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
