// What the editor shows and changes.

#include "editor/model/editor_model.h"

#include <algorithm>

#include "common/assertion.h"
#include "common/load_string.h"
#include "common/platform/whole_file.h"
#include "instrument/checked_load.h"
#include "instrument/load_error.h"
#include "instrument/names.h"
#include "instrument/text_kind.h"
#include "softsynth/parameters/control_help.h"
#include "softsynth/parameters/starting_values.h"

namespace tarquil {

namespace {

bool is_global(const ControllerInfo& info) {
    return info.scope != ControllerScope::CHANNEL;
}

template <typename... Handlers> struct Overloaded : Handlers... { using Handlers::operator()...; };
template <typename... Handlers> Overloaded(Handlers...) -> Overloaded<Handlers...>;

} // namespace

EditorModel::EditorModel(EditorSynth& edited_synth) : synth(edited_synth) {
    synth.read_state(state);
    selected_channel = state.selected_channel;
    find_channel();
}

bool EditorModel::refresh() {
    const unsigned program = state.program;
    const bool was_heard = is_heard();
    synth.read_state(read);
    const bool is_new = !(read == state);
    if (is_new)
        std::swap(state, read);
    if (read.selected_channel != state.selected_channel) // loaded
        selected_channel = state.selected_channel;
    if (synth.follows_messages() && state.program == program && was_heard && !is_heard() &&
        !is_drum_channel(selected_channel)) {
        synth.set_program(state.channel_programs[selected_channel]);
        synth.read_state(state);
    }
    find_channel();
    if (in_gesture && !gesture_broken && state.program != program) {
        end_gesture();
        in_gesture = true;
        gesture_broken = true;
    }
    return is_new;
}

void EditorModel::begin_gesture(std::string name) {
    end_gesture();
    gesture.name = std::move(name);
    in_gesture = true;
}

void EditorModel::end_gesture() {
    morph.reset();
    if (!in_gesture)
        return;
    in_gesture = false;
    gesture_broken = false;
    is_turning = false;
    UndoStep done;
    std::swap(done, gesture);
    for (const Edit& edit : done.edits)
        synth.end_edit(std::get<ControllerEdit>(edit).number);
    std::erase_if(done.edits, [](const Edit& edit) {
        const auto& change = std::get<ControllerEdit>(edit);
        return change.before == change.after;
    });
    if (!done.edits.empty())
        history.push(std::move(done));
}

void EditorModel::change_controller(unsigned number, int value) {
    synth.set_controller(number, value);
    state.bytes[number] = uint8_t(value);
    strike_is_due = strike_is_due || acts_from_next_note(number);
}

void EditorModel::set_value(unsigned number, int value) {
    set_values({{number, value}});
}

void EditorModel::set_values(Values values) {
    const ControllerInfo* info = find_controller(values.begin()->first);
    TARQ_ASSERT(info != nullptr);
    const bool is_gesture = !in_gesture || is_turning;
    if (is_gesture)
        begin_gesture(info->name);
    for (const auto& [number, value] : values)
        change_in_gesture(number, value);
    if (is_gesture)
        end_gesture();
}

void EditorModel::choose_value(unsigned number, int value) {
    const bool is_gesture = !in_gesture || is_turning;
    if (is_gesture)
        begin_gesture(find_controller(number)->name);
    change_with_starts(number, value);
    if (is_gesture)
        end_gesture();
}

void EditorModel::turn_value(unsigned number, int value) {
    turn_values({{number, value}});
}

void EditorModel::turn_values(Values values) {
    const unsigned number = values.begin()->first;
    if (in_gesture && !is_turning) // a drag goes on
        return;
    if (!is_turning || turned != number || gesture_broken) {
        begin_gesture(find_controller(number)->name);
        is_turning = true;
        turned = number;
    }
    turning_for = 0.0;
    for (const auto& [one, value] : values)
        change_with_starts(one, value);
}

void EditorModel::pass_time(double seconds) {
    turning_for += seconds;
    since_strike += seconds;
    if (is_turning && turning_for >= BURST_SECONDS)
        end_gesture();
}

void EditorModel::change_with_starts(unsigned number, int value) {
    value = filter_controller(number, std::clamp(value, 0, 127));
    if (value == state.bytes[number])
        return;
    const std::vector<StartingValue> starts = starting_values(number, value, state.bytes);
    change_in_gesture(number, value);
    for (const StartingValue& start : starts)
        change_in_gesture(start.number, start.byte);
}

void EditorModel::change_in_gesture(unsigned number, int value) {
    if (gesture_broken)
        return;
    value = filter_controller(number, std::clamp(value, 0, 127));
    auto edit = std::find_if(gesture.edits.begin(), gesture.edits.end(), [&](const Edit& other) {
        return std::get<ControllerEdit>(other).number == number;
    });
    if (edit == gesture.edits.end()) {
        if (value == state.bytes[number])
            return;
        synth.begin_edit(number);
        const int program =
            is_global(*find_controller(number)) ? GLOBAL_PROGRAM : int(state.program);
        gesture.edits.emplace_back(ControllerEdit{program, number, state.bytes[number], value});
        change_controller(number, value);
        return;
    }
    std::get<ControllerEdit>(*edit).after = value;
    if (value != state.bytes[number])
        change_controller(number, value);
}

void EditorModel::undo() {
    end_gesture();
    const UndoStep* step = history.undo();
    if (step == nullptr)
        return;
    for (auto edit = step->edits.rbegin(); edit != step->edits.rend(); ++edit)
        apply(*edit, false);
    refresh();
}

void EditorModel::redo() {
    end_gesture();
    const UndoStep* step = history.redo();
    if (step == nullptr)
        return;
    for (const Edit& edit : step->edits)
        apply(edit, true);
    refresh();
}

void EditorModel::change(UndoStep step) {
    end_gesture();
    for (const Edit& edit : step.edits)
        apply(edit, true);
    history.push(std::move(step));
    refresh();
}

void EditorModel::apply(const Edit& edit, bool forward) {
    std::visit(
        Overloaded{
            [&](const ControllerEdit& change) {
                // What is changed is shown.
                if (change.program != GLOBAL_PROGRAM)
                    select_program(unsigned(change.program));
                synth.begin_edit(change.number);
                change_controller(change.number, forward ? change.after : change.before);
                synth.end_edit(change.number);
            },
            [&](const InstrumentEdit& change) {
                synth.set_instrument(change.program, forward ? change.after : change.before);
            },
            [&](const BankEdit& change) {
                const bool was_heard = is_heard();
                synth.set_bank(forward ? *change.after : *change.before);
                synth.read_state(state);
                follow_channel(was_heard);
            },
            [&](const ChannelEdit& change) {
                synth.set_channel_program(change.channel, forward ? change.after : change.before);
                synth.read_state(state);
                select_channel(change.channel);
            },
            [&](const SongEdit& change) {
                const auto& song = forward ? change.after : change.before;
                synth.set_song(song.first, song.second);
            },
            [&](const DialectEdit& change) {
                const bool was_heard = is_heard();
                synth.set_dialect(forward ? change.after : change.before);
                synth.read_state(state);
                follow_channel(was_heard);
            },
            [&](const TempoSyncEdit& change) { synth.set_tempo_sync(change.after == forward); },
            [&](const LearnedEdit& change) {
                synth.set_learned(forward ? change.after : change.before);
            },
            [&](const VersionEdit& change) { apply(change, forward); },
            [&](const KeptVersionEdit& change) {
                versions[change.program].other = forward ? change.after : change.before;
            },
        },
        edit);
}

std::optional<uint64_t> EditorModel::revision() const {
    return in_gesture && !gesture.edits.empty() ? std::nullopt : std::optional(history.revision());
}

void EditorModel::begin_anew(const TarqSettings& bank,
                             const std::array<uint8_t, NUM_CHANNELS>& programs) {
    end_gesture();
    synth.set_bank(bank);
    for (unsigned channel = 0; channel < programs.size(); channel++)
        synth.set_channel_program(channel, programs[channel]);
    history.clear();
    versions.clear();
    refresh();
}

void EditorModel::select_program(unsigned program) {
    if (program == state.program)
        return;
    end_gesture();
    synth.set_program(program);
    refresh();
}

void EditorModel::replace_instrument(std::string step_name, unsigned program,
                                     const Instrument& instrument) {
    UndoStep step{std::move(step_name), {}};
    step.edits.emplace_back(InstrumentEdit{program, synth.get_instrument(program), instrument});
    change(std::move(step));
}

void EditorModel::rename_program(unsigned program, std::string_view name) {
    const std::string kept = storable_text(name);
    if (kept.empty())
        return;
    Instrument renamed = synth.get_instrument(program);
    const std::string before = renamed.get_name();
    renamed.set_name(kept);
    if (renamed.get_name() != before)
        replace_instrument("Rename", program, renamed);
}

void EditorModel::assign_channel(unsigned channel, unsigned program) {
    const unsigned before = state.channel_programs[channel];
    if (before == program)
        select_channel(channel);
    else
        change({"Channel " + std::to_string(channel + 1), {ChannelEdit{channel, before, program}}});
}

void EditorModel::set_song(std::string_view title, std::string_view author) {
    const std::pair before(state.song_title, state.song_author);
    const std::pair after(storable_text(title), storable_text(author));
    if (before != after)
        change({"Song", {SongEdit{before, after}}});
}

void EditorModel::set_dialect(MidiDialect dialect) {
    if (dialect != state.dialect)
        change({"General MIDI", {DialectEdit{state.dialect, dialect}}});
}

void EditorModel::set_tempo_sync(bool is_on) {
    if (is_on != state.tempo_sync)
        change({"Follow the tempo", {TempoSyncEdit{is_on}}});
}

void EditorModel::paste_instrument(const Instrument& instrument, unsigned program) {
    replace_instrument("Paste", program, instrument);
}

void EditorModel::load_instrument(const Instrument& instrument, unsigned program) {
    replace_instrument("Load instrument", program, instrument);
}

void EditorModel::copy_program(unsigned from, unsigned to) {
    if (from != to)
        replace_instrument("Copy", to, synth.get_instrument(from));
}

void EditorModel::swap_programs(unsigned one, unsigned other) {
    if (one == other)
        return;
    const Instrument first = synth.get_instrument(one);
    const Instrument second = synth.get_instrument(other);
    change({"Swap", {InstrumentEdit{one, first, second}, InstrumentEdit{other, second, first}}});
}

void EditorModel::initialise_program(unsigned program) {
    replace_instrument("Initialise", program, built_in_instrument(program));
}

std::optional<TextKind> EditorModel::kind_of_file(const std::string& path) {
    std::string text;
    if (load_regular_file_to_string(path, text) != 0)
        return std::nullopt;
    for (const TextKind kind : {TextKind::BANK, TextKind::INSTRUMENT}) {
        if (is_text_of(kind, text))
            return kind;
    }
    return std::nullopt;
}

std::string EditorModel::read_bank_file(const std::string& path, TarqSettings& bank) {
    const int error = load_bank_checked(bank, path);
    return error != 0 ? explain_bank_error(path, error) : "";
}

std::string EditorModel::read_instrument_file(const std::string& path, Instrument& instrument) {
    const int error = load_instrument_checked(instrument, path);
    return error != 0 ? explain_instrument_error(path, error) : "";
}

std::string EditorModel::import_instrument(const std::string& path, unsigned program) {
    Instrument loaded = synth.get_instrument(program);
    std::string problem = read_instrument_file(path, loaded);
    if (!problem.empty())
        return problem;
    replace_instrument("Import instrument", program, loaded);
    return "";
}

std::string EditorModel::export_instrument(const std::string& path, unsigned program) {
    return write_whole_file(path, synth.get_instrument(program).save_to_string());
}

std::string EditorModel::import_bank(const std::string& path) {
    auto before = std::make_shared<TarqSettings>();
    synth.copy_bank(*before);
    auto loaded = std::make_shared<TarqSettings>(*before);
    std::string problem = read_bank_file(path, *loaded);
    if (!problem.empty())
        return problem;
    change({"Import bank", {BankEdit{std::move(before), std::move(loaded)}}});
    return "";
}

std::string EditorModel::export_bank(const std::string& path) {
    const auto bank = std::make_unique<TarqSettings>();
    synth.copy_bank(*bank);
    std::string text;
    if (bank->text_save_to_string(text) != 0)
        return path + ": the bank cannot be written as text";
    return write_whole_file(path, text);
}

} // namespace tarquil
