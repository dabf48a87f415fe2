// The steps that undo and redo walk along.

#include "editor/model/undo_history.h"

namespace tarquil {

void UndoHistory::push(UndoStep step) {
    steps.resize(position);
    step.revision = ++last_revision;
    steps.push_back(std::move(step));
    if (steps.size() > MAX_STEPS) {
        first_revision = steps.front().revision;
        steps.erase(steps.begin());
    }
    position = steps.size();
}

void UndoHistory::clear() {
    steps.clear();
    position = 0;
    first_revision = ++last_revision;
}

const UndoStep* UndoHistory::undo() {
    return position > 0 ? &steps[--position] : nullptr;
}

const UndoStep* UndoHistory::redo() {
    return position < steps.size() ? &steps[position++] : nullptr;
}

std::string UndoHistory::undo_name() const {
    return position > 0 ? steps[position - 1].name : "";
}

std::string UndoHistory::redo_name() const {
    return position < steps.size() ? steps[position].name : "";
}

} // namespace tarquil
