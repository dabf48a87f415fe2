// What the editor needs of the synthesizer that it edits.
//
// Every call comes from the window's thread.  An implementation takes its lock for the call only;
// `read_meters` and `read_output` take none and allocate nothing.

#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "editor/model/editor_keys.h"
#include "editor/model/editor_notice.h"
#include "instrument/phrase.h"
#include "instrument/settings.h"
#include "softsynth/parameters/constants.h"
#include "softsynth/parameters/families.h"
#include "softsynth/parameters/midi_dialect.h"
#include "softsynth/parameters/note_view.h"

namespace tarquil {

class WaveformStore;

// What is shown, copied as a whole once per refresh.
struct EditorState {
    ControllerBytes bytes{}; // the current program's, and the global ones
    unsigned program = 0;    // the current one, 0..127
    std::array<uint8_t, NUM_CHANNELS> channel_programs{};
    unsigned selected_channel = 0; // as it was told or loaded last
    std::array<std::string, MAX_INSTRUMENTS> names;
    std::string song_title;
    std::string song_author;
    MidiDialect dialect = MidiDialect::NATIVE; // of the messages that are played
    bool tempo_sync = false;                   // what can follow the host's tempo follows it
    LearnedControls learned;                   // by MIDI controllers

    bool operator==(const EditorState& other) const = default;
};

// All of a state but what belongs to channels.
void read_bank(const TarqSettings& bank, unsigned program, EditorState& state);

// Levels are linear.
struct EditorMeters {
    std::array<float, 2> peaks{}; // left and right, highest since the last call
    std::array<float, NUM_COMPRESSOR_BANDS> band_levels{}; // of the compressor's followers
    std::array<float, NUM_COMPRESSOR_BANDS> band_gains = {1.0F, 1.0F, 1.0F, 1.0F}; // without makeup
    unsigned voices = 0;
    NoteView note;                // the last one on a channel that plays the edited program
    unsigned active_channels = 0; // bit c: a note started on channel c since the last call
    double tempo = 120.0;         // quarter notes a minute, whether anything follows it or not

    bool operator==(const EditorMeters& other) const = default;
};

// A bank that comes with the program, to choose sounds from.
struct ShippedBank {
    std::string title;
    const TarqSettings* bank = nullptr; // for as long as the process runs
};

// Whose output a scope shows: nobody's, which costs nothing; all that is played; or what the
// channels with the edited program add to it before the master section.
enum class ScopeSource { NOTHING, WHOLE, PROGRAM };

class EditorSynth {
  public:
    EditorSynth() = default;
    EditorSynth(const EditorSynth&) = delete;
    EditorSynth& operator=(const EditorSynth&) = delete;
    virtual ~EditorSynth() = default;

    virtual void read_state(EditorState& state) = 0;
    virtual EditorMeters read_meters() = 0;
    // What read_output gives from now on: the last left.size() frames (at most MAX_SCOPE_FRAMES) at
    // 44100 Hz.  False when there is nothing new.
    virtual void watch_output(ScopeSource source) = 0;
    virtual bool read_output(std::span<float> left, std::span<float> right) = 0;
    static constexpr size_t MAX_SCOPE_FRAMES = 16384;

    // Changes a controller (with a key, `value` 0..127 within its choices) of the current program,
    // or a global one, and tells the host; every change lies between begin_edit and end_edit.
    virtual void begin_edit(unsigned number) = 0;
    virtual void set_controller(unsigned number, int value) = 0;
    virtual void end_edit(unsigned number) = 0;
    // The host's parameter index, 0 for none.
    [[nodiscard]] virtual int host_parameter(unsigned number) const = 0;

    virtual void set_program(unsigned program) = 0;
    virtual void set_channel_program(unsigned channel, unsigned program) = 0;
    // To be kept with the sounds.
    virtual void set_selected_channel(unsigned channel) = 0;
    // Whether a message that gives the selected channel another program changes what is edited:
    // not where a host's automation means the edited program, with a window or without.
    [[nodiscard]] virtual bool follows_messages() const { return false; }
    // The programs of General MIDI's drum channel that are kits of their own.
    virtual std::vector<unsigned> drum_kits() { return {}; }

    virtual Instrument get_instrument(unsigned program) = 0;
    virtual void set_instrument(unsigned program, const Instrument& instrument) = 0;
    // The bank as a whole; channels keep their program numbers.
    virtual void copy_bank(TarqSettings& bank) = 0;
    virtual void set_bank(const TarqSettings& bank) = 0;
    // What messages mean, kept with the bank; a change ends what sounds.
    virtual void set_dialect(MidiDialect dialect) = 0;
    // Kept with the bank.
    virtual void set_tempo_sync(bool is_on) = 0;
    virtual void set_learned(const LearnedControls& learned) = 0;
    // While on, MIDI controllers do nothing but to be heard; the last one since the last call.
    virtual void listen(bool is_on) = 0;
    virtual std::optional<unsigned> take_heard_controller() = 0;
    virtual void set_song(const std::string& title, const std::string& author) = 0;

    // What its oscillators play, to be drawn.
    virtual const WaveformStore& get_waves() = 0;

    [[nodiscard]] virtual bool is_band_muted(unsigned band) const = 0;
    virtual void set_band_muted(unsigned band, bool muted) = 0;

    // Plays a phrase with a sound that is in no bank yet, beside all else, instead of one that is
    // played so already.  Nothing that is edited or saved knows of it.
    virtual void audition(const Instrument& sound, const Phrase& phrase) = 0;
    virtual void end_audition() = 0;

    // Ends all notes of all channels, and an audition.
    virtual void panic() = 0;

    virtual std::vector<ShippedBank> shipped_banks() { return {}; }
    [[nodiscard]] virtual EditorNotice read_notice() { return {}; }
    // Now and then while a window is open, with the seconds since the last call; and once it is
    // closed.
    virtual void pass_time(double /*seconds*/) {}
    virtual void window_closed() {}

    // Played by hand in the window: no host is told.  Channel 0..15, key 0..127, velocity 0..127 of
    // which 0 lets the key go; the others' ranges are those of EditorKeys.
    virtual void play_key(unsigned channel, unsigned key, unsigned velocity) = 0;
    virtual void bend(unsigned channel, unsigned value) = 0;
    // These mean something in General MIDI only.
    virtual void set_modulation(unsigned channel, unsigned value) = 0;
    virtual void set_sustain(unsigned channel, bool is_down) = 0;
    // Takes no lock.
    virtual EditorKeys read_keys() = 0;
    // Keys that are down on channels that play the edited program are struck again.
    virtual void strike_again() = 0;
};

} // namespace tarquil
