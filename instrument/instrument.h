// One channel's complete sound: a name, a file name, a byte for every controller and what is said
// about it.

#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "instrument/controller_bytes.h"
#include "instrument/kept_lines.h"
#include "softsynth/parameters/midi_event.h"

namespace tarquil {

// Read for an instrument that a bank does not have, from the current folder; never saved with a
// sound.
inline constexpr const char* DEFAULT_INSTRUMENT_FILE = "default.tqi";

// What may be said about an instrument: free text in a line each, empty when nothing is said.
enum class InstrumentText { AUTHOR, CATEGORY, TAGS, COMMENT };

// Loads and saves return 0 or an error code: 1 the file cannot be opened, 2 read or write error or
// an odd number of hex digits, 3 bad hex digit, 6 broken line.
class Instrument {
  public:
    // No name, no file name, default controllers.
    Instrument();

    // Every controller back to its default, nothing said about the sound; the names stay.
    void load_default();

    // Reads the sound from `filename` (a path, or the text itself: text_source.h), from `path`,
    // which does not become the file name, or from the text itself.  A missing key gives its
    // default, and a warning in the report; a missing name leaves the name.  A load that fails
    // changes nothing. Bytes are as the text maps, choices beyond their list included (see
    // checked_load).  Lines that are not known are kept and saved.
    int text_load(LoadReport* report = nullptr) { return text_load(get_filename(), report); }
    int text_load(const std::string& path, LoadReport* report = nullptr,
                  MissingKeys missing = MissingKeys::REPORTED);
    int load_from_string(std::string_view text, LoadReport* report = nullptr,
                         MissingKeys missing = MissingKeys::REPORTED);

    // Writes the sound to `filename`.  DEFAULT_INSTRUMENT_FILE is made empty instead: 15.
    [[nodiscard]] int text_save() const;
    [[nodiscard]] std::string save_to_string() const;

    // The same without the controllers that have their defaults, nor a name that is empty.
    [[nodiscard]] std::string save_changes_to_string() const;
    // As a file name that is the sound itself, in about an eighth of the characters (packed_text).
    [[nodiscard]] std::string save_changes_packed() const;

    // White space in a name becomes "_"; in a file name only after its last "/", if it has one.
    void set_name(std::string_view new_name);
    void set_filename(std::string_view path);
    [[nodiscard]] const std::string& get_name() const { return name; }
    [[nodiscard]] const std::string& get_filename() const { return *filename; }

    // Stored as storable_text has it, at most MAX_TEXT_BYTES.
    static constexpr size_t MAX_TEXT_BYTES = 4096;
    void set_text(InstrumentText which, std::string_view text);
    [[nodiscard]] std::string_view get_text(InstrumentText which) const;
    [[nodiscard]] const KeptLines& get_kept_lines() const { return kept_lines; }

    // `controller` 0..205, `val` 0..127.
    [[nodiscard]] int get_controller(unsigned controller) const;
    void set_controller(unsigned controller, int val);
    // Those of global controllers mean nothing.
    [[nodiscard]] const ControllerBytes& get_bytes() const { return bytes; }
    void set_bytes(const ControllerBytes& new_bytes) { bytes = new_bytes; }

    // Changes every channel controller to this sound at the absolute sample time `time`, in number
    // order, as control changes of `channel` (0..15).  Returns their count, or 0 and writes nothing
    // into room for less than 206 (`capacity`, in events).
    unsigned emit_program_change(midi_event* out, unsigned channel, uint32_t time,
                                 unsigned capacity) const;

    // Writes one such event and returns 1.
    unsigned emit_single_controller(midi_event* out, unsigned channel, unsigned controller,
                                    uint32_t time) const;

  private:
    void write(TextFileMemoryWriter& writer) const;

    ControllerBytes bytes{};
    // Shared among copies: that of an instrument within a bank is its whole text.
    std::shared_ptr<const std::string> filename;
    std::string name;
    KeptLines kept_lines;
};

} // namespace tarquil
