// The editor's model: what MIDI controllers learn, and notes that are struck again.

#include "editor/model/editor_model.h"
#include "softsynth/parameters/controller_table.h"

namespace tarquil {

void EditorModel::start_learning(unsigned number) {
    if (!can_be_learned(number))
        return;
    learned_control = number;
    synth.listen(true);
}

void EditorModel::stop_learning() {
    if (learned_control)
        synth.listen(false);
    learned_control.reset();
}

std::optional<unsigned> EditorModel::finish_learning() {
    const std::optional<unsigned> heard =
        learned_control ? synth.take_heard_controller() : std::nullopt;
    if (!heard)
        return std::nullopt;
    LearnedControls learned = state.learned;
    learned.learn(*heard, *learned_control);
    set_learned("Learn " + std::string(find_controller(*learned_control)->name), learned);
    stop_learning();
    return heard;
}

void EditorModel::set_learned(std::string step_name, const LearnedControls& learned) {
    if (!(learned == state.learned))
        change({std::move(step_name), {LearnedEdit{state.learned, learned}}});
}

void EditorModel::strike_if_due(bool is_wanted) {
    const bool is_now = strike_is_due && is_wanted && since_strike >= STRIKE_SECONDS;
    strike_is_due = strike_is_due && is_wanted && !is_now;
    if (!is_now)
        return;
    since_strike = 0.0;
    synth.strike_again();
}

} // namespace tarquil
