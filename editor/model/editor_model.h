// What the editor shows and changes: the values, the gestures, undo and redo, programs and files.
// It draws nothing.

#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "editor/model/editor_synth.h"
#include "editor/model/morph.h"
#include "editor/model/undo_history.h"
#include "instrument/keys.h"

namespace tarquil {

class EditorModel {
  public:
    explicit EditorModel(EditorSynth& edited_synth);

    // Reads what the host and others have changed.  A gesture ends when the program has changed.
    // True when something has.
    bool refresh();
    [[nodiscard]] const EditorState& get_state() const { return state; }
    EditorSynth& get_synth() { return synth; }

    [[nodiscard]] int value(unsigned number) const { return state.bytes[number]; }
    [[nodiscard]] const std::string& program_name() const { return state.names[state.program]; }

    // A gesture is everything between its begin and its end: one step to undo, one edit for the
    // host.  A change outside of one is a gesture by itself.
    void begin_gesture(std::string name);
    void end_gesture();
    [[nodiscard]] bool is_in_gesture() const { return in_gesture; }

    // Clamped to 0..127 and to the controller's choices.
    void set_value(unsigned number, int value);
    // Several that are one thing to people; the first one stands for all.
    using Values = std::initializer_list<std::pair<unsigned, int>>;
    void set_values(Values values);
    // The same by hand: the type of an effect or a filter brings its starting values along.
    void choose_value(unsigned number, int value);
    // The same, where a wheel's notches or keys on one control that follow each other closely are
    // one gesture, which ends BURST_SECONDS after the last.
    void turn_value(unsigned number, int value);
    void turn_values(Values values);
    void pass_time(double seconds);
    static constexpr double BURST_SECONDS = 0.5;

    void undo();
    void redo();
    [[nodiscard]] std::string undo_name() const {
        return is_turning && !gesture.edits.empty() ? gesture.name : history.undo_name();
    }
    [[nodiscard]] std::string redo_name() const { return history.redo_name(); }

    // A number of what the edits have made of the bank; undo brings back an earlier one.  Nothing
    // while a gesture has changed something: that has no number yet.
    [[nodiscard]] std::optional<uint64_t> revision() const;
    // Another bank with the channels' programs, and nothing to undo.
    void begin_anew(const TarqSettings& bank, const std::array<uint8_t, NUM_CHANNELS>& programs);

    // What is edited is what is heard: a channel is selected, and its program is edited.  The
    // selected channel is one that plays the edited program as long as any does.
    [[nodiscard]] unsigned channel() const { return selected_channel; }
    [[nodiscard]] bool is_heard() const { return plays_edited(selected_channel); }
    [[nodiscard]] bool plays_edited(unsigned channel) const;
    [[nodiscard]] bool is_drum_channel(unsigned channel) const;
    // Edits its program.  Not a step, and nothing for the drum channel, whose kits are no programs.
    void select_channel(unsigned channel);
    // The selected channel plays the program, which is edited.
    void choose_program(unsigned program);
    // Edits a program without playing it, unless a channel does.  Not a step: what sounds stays.
    void select_program(unsigned program);
    // Blanks and "#" become "_", which is what the files can hold; an empty name is ignored.
    void rename_program(unsigned program, std::string_view name);
    // As if the channel were selected and the program chosen; of the drum channel, a kit.
    void assign_channel(unsigned channel, unsigned program);
    // The channel is selected and plays this sound, in a program that no other channel plays unless
    // the bank has the sound already.  One step.  Empty, or why not.
    [[nodiscard]] std::string give_to_channel(const Instrument& instrument, unsigned channel);
    void set_song(std::string_view title, std::string_view author);
    void set_dialect(MidiDialect dialect);
    void set_tempo_sync(bool is_on);

    // MIDI learn: the next MIDI controller that is moved moves this control from then on.
    void start_learning(unsigned number);
    void stop_learning();
    [[nodiscard]] std::optional<unsigned> learning() const { return learned_control; }
    // The one that has been moved, and is learned as a step.
    std::optional<unsigned> finish_learning();
    // As a step with this name.
    void set_learned(std::string step_name, const LearnedControls& learned);

    // What sounds is struck again when a control has been edited that is heard from the next note
    // on only; not more often than a hand would.
    void strike_if_due(bool is_wanted);
    static constexpr double STRIKE_SECONDS = 0.15;

    // Two versions of each program, A and B, as steps.  B starts as a copy of A.
    [[nodiscard]] bool is_version_b() const;
    void compare();
    void copy_to_other_version();

    // The way from version A to B, as one gesture, with what lies between them in the program: it
    // sounds, is shown and told the host as what is edited by hand.  False: they do not differ.
    [[nodiscard]] bool start_morph();
    // 0: A to 1: B; nothing while there is none, as when something else has ended the gesture.
    [[nodiscard]] std::optional<double> morph_position() const;
    // At most an edit for each controller of a program.
    void set_morph(double position);
    // What lies there stays, as one step.
    void keep_morph();
    // All is as before, without a step.
    void drop_morph();

    // A program as the text of its file, for the desktop's clipboard; the latter returns why it
    // could not be done, empty when it was.
    [[nodiscard]] std::string copied_text(unsigned program);
    [[nodiscard]] std::string paste_text(const std::string& text, unsigned program);

    void paste_instrument(const Instrument& instrument, unsigned program);
    // One that comes from elsewhere.
    void load_instrument(const Instrument& instrument, unsigned program);
    void copy_program(unsigned from, unsigned to);
    void swap_programs(unsigned one, unsigned other);
    // To the built-in sound and the name that an untouched slot has.
    void initialise_program(unsigned program);

    // Each returns why it could not be done, empty when it was.  An import that fails changes
    // nothing, an export that fails leaves the file as it was.
    // What a file holds by its keys, whatever its name says; nothing when it is neither.
    static std::optional<TextKind> kind_of_file(const std::string& path);
    // The instrument or the bank in a file, with nothing changed.  What an instrument's file does
    // not say of names stays.
    static std::string read_instrument_file(const std::string& path, Instrument& instrument);
    static std::string read_bank_file(const std::string& path, TarqSettings& bank);
    std::string import_instrument(const std::string& path, unsigned program);
    std::string export_instrument(const std::string& path, unsigned program);
    std::string import_bank(const std::string& path);
    std::string export_bank(const std::string& path);

    // The copied value of a controller, as a fraction of its range, for pasting into any other.
    std::optional<double> copied_value;

  private:
    void change(UndoStep step);
    void apply(const Edit& edit, bool forward);
    void change_controller(unsigned number, int value);
    void change_in_gesture(unsigned number, int value);
    void change_with_starts(unsigned number, int value);
    void set_program_bytes(const ControllerBytes& bytes);
    void apply(const VersionEdit& change, bool forward);
    [[nodiscard]] Instrument other_version(unsigned program);
    void follow_channel(bool was_heard);
    void find_channel();
    void keep_channel(unsigned channel);
    [[nodiscard]] unsigned program_for(unsigned channel) const;
    void replace_instrument(std::string step_name, unsigned program, const Instrument& instrument);

    EditorSynth& synth;
    EditorState state;
    EditorState read; // kept for its memory
    unsigned selected_channel = 0;
    struct Version {
        Instrument other; // that is not heard
        bool is_b = false;
    };
    std::map<unsigned, Version> versions; // of programs, once compared
    UndoHistory history;

    struct Morph {
        ControllerBytes a{};
        ControllerBytes b{};
        ControllerBytes before{}; // the one of them that was heard
        double position = 0.0;
    };
    std::optional<Morph> morph; // while it is the gesture

    std::optional<unsigned> learned_control; // while it is being learned
    bool strike_is_due = false;
    double since_strike = STRIKE_SECONDS; // seconds

    UndoStep gesture;
    bool in_gesture = false;
    bool gesture_broken = false; // the host has changed the program under it
    bool is_turning = false;     // it is one of turn_value
    unsigned turned = 0;         // the control
    double turning_for = 0.0;    // seconds since the last notch
};

} // namespace tarquil
