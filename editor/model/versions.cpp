// The editor's two versions of a program, and programs as text.

#include "editor/model/editor_model.h"
#include "editor/model/section_text.h"
#include "instrument/checked_load.h"

namespace tarquil {

bool EditorModel::is_version_b() const {
    const auto found = versions.find(state.program);
    return found != versions.end() && found->second.is_b;
}

// The version that is not heard; at first as the one that is.
Instrument EditorModel::other_version(unsigned program) {
    const auto found = versions.find(program);
    return found != versions.end() ? found->second.other : synth.get_instrument(program);
}

void EditorModel::compare() {
    const unsigned program = state.program;
    const Instrument before = synth.get_instrument(program);
    Instrument after = other_version(program);
    after.set_name(before.get_name()); // a name is no part of how it sounds
    change({"Compare", {VersionEdit{program, before, after}}});
}

void EditorModel::copy_to_other_version() {
    const unsigned program = state.program;
    change({"Copy to the other version",
            {KeptVersionEdit{program, other_version(program), synth.get_instrument(program)}}});
}

void EditorModel::apply(const VersionEdit& change, bool forward) {
    Version& version = versions[change.program];
    version.other = forward ? change.before : change.after;
    version.is_b = !version.is_b;
    synth.set_instrument(change.program, forward ? change.after : change.before);
}

std::string EditorModel::copied_text(unsigned program) {
    return synth.get_instrument(program).save_to_string();
}

std::string EditorModel::paste_text(const std::string& text, unsigned program) {
    const std::string section = section_of_text(text);
    if (!section.empty())
        return "The clipboard holds " + section + " alone: paste it on a panel, by its three dots";
    Instrument pasted = synth.get_instrument(program);
    if (load_instrument_checked_from_string(pasted, text) != 0)
        return "The clipboard holds no program";
    paste_instrument(pasted, program);
    return "";
}

} // namespace tarquil
