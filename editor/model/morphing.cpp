// The editor's model: the sound between the two versions of a program.

#include <algorithm>

#include "editor/model/editor_model.h"
#include "softsynth/parameters/controller_table.h"

namespace tarquil {

bool EditorModel::start_morph() {
    end_gesture();
    const ControllerBytes heard = synth.get_instrument(state.program).get_bytes();
    const ControllerBytes other = other_version(state.program).get_bytes();
    const bool is_b = is_version_b();
    Morph begun{is_b ? other : heard, is_b ? heard : other, heard, is_b ? 1.0 : 0.0};
    if (begun.a == begun.b)
        return false;
    begin_gesture("Morph");
    morph = begun;
    return true;
}

std::optional<double> EditorModel::morph_position() const {
    return morph ? std::optional(morph->position) : std::nullopt;
}

void EditorModel::set_morph(double position) {
    if (!morph)
        return;
    morph->position = std::clamp(position, 0.0, 1.0);
    set_program_bytes(morphed(morph->a, morph->b, morph->position));
}

void EditorModel::keep_morph() {
    if (morph)
        end_gesture();
}

void EditorModel::drop_morph() {
    if (!morph)
        return;
    set_program_bytes(morph->before);
    end_gesture();
}

void EditorModel::set_program_bytes(const ControllerBytes& bytes) {
    for (const ControllerInfo& info : channel_controller_rows())
        change_in_gesture(info.number, bytes[info.number]);
}

} // namespace tarquil
