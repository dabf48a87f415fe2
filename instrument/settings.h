// A whole bank: 128 instruments, the global controllers, the song's title and author, the dialect
// of MIDI that it speaks.

#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "instrument/controller_bytes.h"
#include "instrument/instrument.h"
#include "instrument/kept_lines.h"
#include "instrument/learned_controls.h"
#include "softsynth/parameters/midi_dialect.h"
#include "softsynth/parameters/midi_event.h"

namespace tarquil {

inline constexpr unsigned MAX_INSTRUMENTS = 128;

struct BankPairs;

// Loads and saves return 0 or an error code, as those of Instrument do.
class TarqSettings {
  public:
    // As after load_default, the instruments without names.
    TarqSettings();

    // `number` 0..127.
    Instrument& get_instrument(unsigned number);
    [[nodiscard]] const Instrument& get_instrument(unsigned number) const;

    // All controllers to their defaults, title and author empty, the native dialect; the
    // instruments' names and file names stay.
    void load_default();

    // Reads a bank.  An instrument without a key is read from DEFAULT_INSTRUMENT_FILE, or is a
    // built-in one in a compact state (see save_state_compact).  Lines that are not known are kept
    // and saved.
    // Text with a broken line changes nothing, nor does a state of a later version (8); an
    // instrument that cannot be loaded ends the load and leaves defaults from there on.  See
    // checked_load for loads that succeed or change nothing.
    int text_load(const std::string& path, LoadReport* report = nullptr);
    int text_load_from_string(std::string_view text, LoadReport* report = nullptr);

    // Writes a bank; a file on disk is replaced as a whole or not at all.
    [[nodiscard]] int text_save(const std::string& path) const;
    int text_save_to_string(std::string& out) const;

    // What is not the instruments': the global controllers, title, author, dialect and unknown
    // lines.  From a bank's text they are taken too.  0, or 6 for a broken line, which changes
    // nothing.
    [[nodiscard]] std::string globals_to_string() const;
    int load_globals_from_string(std::string_view text, LoadReport* report = nullptr);

    // The byte of controller `number` (0..205), whatever its scope; neither argument is checked.
    [[nodiscard]] int get_global_controller(unsigned number) const { return bytes[number]; }
    void set_global_controller(unsigned number, int value) { bytes[number] = uint8_t(value); }
    [[nodiscard]] const ControllerBytes& get_global_bytes() const { return bytes; }
    void set_global_bytes(const ControllerBytes& new_bytes) { bytes = new_bytes; }

    // Changes every global controller at the absolute sample time `time`, in number order, as
    // control changes of channel 0, as many as there is room for (`capacity`, in events), and
    // returns their count.
    unsigned emit_global_controllers(midi_event* out, uint32_t time, unsigned capacity) const;

    // Writes one such event, of a global controller, and returns 1.
    unsigned emit_single_global_controller(midi_event* out, unsigned num, uint32_t time) const;

    // Free text without line breaks.
    void set_song_title(std::string_view title) { song_title = title; }
    void set_song_author(std::string_view author) { song_author = author; }
    [[nodiscard]] const std::string& get_song_title() const { return song_title; }
    [[nodiscard]] const std::string& get_song_author() const { return song_author; }

    void set_midi_dialect(MidiDialect dialect);
    [[nodiscard]] MidiDialect get_midi_dialect() const;
    // Delays, LFOs and the retrigger follow the host's tempo; false if nothing is said.
    void set_tempo_sync(bool is_on);
    [[nodiscard]] bool get_tempo_sync() const;
    // Which controllers of a MIDI keyboard move which controls; none if nothing is said.
    void set_learned(const LearnedControls& learned);
    [[nodiscard]] LearnedControls get_learned() const;
    [[nodiscard]] const KeptLines& get_kept_lines() const { return kept_lines; }

  private:
    friend std::string save_state_compact(const TarqSettings& bank);

    int load_instrument(unsigned number, const BankPairs& pairs, LoadReport* report);
    void take_song(const BankPairs& pairs);
    void write_song(TextFileMemoryWriter& writer) const;

    std::array<Instrument, MAX_INSTRUMENTS> instruments;
    ControllerBytes bytes{};
    std::string song_title;
    std::string song_author;
    KeptLines kept_lines;
};

// The bank in a text that any of the loads reads: a version, and only what differs from a new bank,
// whose instruments are those of built_in_instrument.  A new bank takes 18 bytes instead of 830000.
std::string save_state_compact(const TarqSettings& bank);

} // namespace tarquil
