// A whole bank: 128 instruments, the global controllers, the song's title and author.

#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "instrument/controller_bytes.h"
#include "instrument/instrument.h"
#include "softsynth/parameters/midi_event.h"

namespace tarquil {

inline constexpr unsigned MAX_INSTRUMENTS = 128;

// Loads and saves return 0 or an error code, as those of Instrument do.
class TarqSettings {
  public:
    // As after load_default, the instruments without names.
    TarqSettings();

    // `number` 0..127.
    Instrument& get_instrument(unsigned number);
    [[nodiscard]] const Instrument& get_instrument(unsigned number) const;

    // All controllers to their defaults, title and author empty, not General MIDI; the instruments'
    // names and file names stay.
    void load_default();

    // Reads a bank.  An instrument without a key is read from DEFAULT_INSTRUMENT_FILE.
    // Text with a broken line changes nothing; an instrument that cannot be loaded ends the load
    // and leaves defaults from there on.  See checked_load for loads that succeed or change
    // nothing.
    int text_load(const std::string& path, LoadReport* report = nullptr);
    int text_load_from_string(std::string_view text, LoadReport* report = nullptr);

    // Writes a bank; a file on disk is replaced as a whole or not at all.
    [[nodiscard]] int text_save(const std::string& path) const;
    int text_save_to_string(std::string& out) const;

    // The byte of controller `number` (0..205), whatever its scope; neither argument is checked.
    [[nodiscard]] int get_global_controller(unsigned number) const { return bytes[number]; }
    void set_global_controller(unsigned number, int value) { bytes[number] = uint8_t(value); }

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

    // Whether the bank is made for General MIDI messages rather than the engine's own numbers.
    void set_general_midi(bool is_general_midi) { general_midi = is_general_midi; }
    [[nodiscard]] bool is_general_midi() const { return general_midi; }

  private:
    std::array<Instrument, MAX_INSTRUMENTS> instruments;
    ControllerBytes bytes{};
    std::string song_title;
    std::string song_author;
    bool general_midi = false;
};

} // namespace tarquil
