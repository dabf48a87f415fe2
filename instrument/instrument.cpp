// One channel's complete sound.

#include "instrument/instrument.h"

#include <algorithm>

#include "common/assertion.h"
#include "common/white_space.h"
#include "instrument/text_file_writer.h"

namespace tarquil {

namespace {

constexpr int CANNOT_OPEN = 1;

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

} // namespace

Instrument::Instrument() {
    load_default();
}

void Instrument::load_default() {
    bytes = instrument_defaults();
}

int Instrument::text_load(const std::string& path, LoadReport* report) {
    TextFileReader reader;
    const int error = reader.load_from_file(path);
    return error != 0 ? error : load_from(reader, report);
}

int Instrument::load_from_string(std::string_view text, LoadReport* report) {
    TextFileReader reader;
    const int error = reader.load_from_string(text);
    return error != 0 ? error : load_from(reader, report);
}

int Instrument::load_from(const TextFileReader& reader, LoadReport* report) {
    reader.get_str("name", name);
    set_name(name);
    load_default();
    read_controllers(reader, channel_controller_rows(), bytes, report);
    return 0;
}

int Instrument::text_save() const {
    TextFileWriter writer;
    if (writer.open(filename))
        return CANNOT_OPEN;
    if (filename == DEFAULT_INSTRUMENT_FILE)
        return DEFAULT_FILE_NOT_SAVED;
    write(writer);
    return writer.close();
}

std::string Instrument::save_to_string() const {
    TextFileMemoryWriter writer;
    write(writer);
    return writer.get_string();
}

void Instrument::write(TextFileMemoryWriter& writer) const {
    writer.write_str("name", name);
    write_controllers(writer, channel_controller_rows(), bytes);
}

void Instrument::set_name(std::string_view new_name) {
    name = new_name;
    std::replace_if(name.begin(), name.end(), is_white_space, '_');
}

void Instrument::set_filename(std::string_view path) {
    filename = path;
    const size_t slash = filename.rfind('/');
    if (slash != std::string::npos)
        std::replace_if(filename.begin() + ptrdiff_t(slash), filename.end(), is_white_space, '_');
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
