// The steps that undo and redo walk along.

#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "instrument/settings.h"

namespace tarquil {

// A controller of a program, or a global one.
struct ControllerEdit {
    int program = 0; // GLOBAL_PROGRAM for a global one
    unsigned number = 0;
    int before = 0;
    int after = 0;
};
inline constexpr int GLOBAL_PROGRAM = -1;

struct InstrumentEdit {
    unsigned program = 0;
    Instrument before{};
    Instrument after{};
};

struct BankEdit {
    std::shared_ptr<const TarqSettings> before{};
    std::shared_ptr<const TarqSettings> after{};
};

struct ChannelEdit {
    unsigned channel = 0;
    unsigned before = 0;
    unsigned after = 0;
};

struct SongEdit {
    std::pair<std::string, std::string> before{}; // title, author
    std::pair<std::string, std::string> after{};
};

struct DialectEdit {
    MidiDialect before = MidiDialect::NATIVE;
    MidiDialect after = MidiDialect::NATIVE;
};

struct TempoSyncEdit {
    bool after = false;
};

struct LearnedEdit {
    LearnedControls before{};
    LearnedControls after{};
};

// The version of a program that is heard is changed for the other.
struct VersionEdit {
    unsigned program = 0;
    Instrument before{};
    Instrument after{};
};

// The version that is not heard.
struct KeptVersionEdit {
    unsigned program = 0;
    Instrument before{};
    Instrument after{};
};

using Edit = std::variant<ControllerEdit, InstrumentEdit, BankEdit, ChannelEdit, SongEdit,
                          DialectEdit, TempoSyncEdit, LearnedEdit, VersionEdit, KeptVersionEdit>;

// What one gesture changed, in order.
struct UndoStep {
    std::string name{}; // for people: "Filter cutoff"
    std::vector<Edit> edits{};
    uint64_t revision = 0; // behind it; the history's business
};

class UndoHistory {
  public:
    // Forgets what was undone, and the oldest step beyond MAX_STEPS.
    void push(UndoStep step);

    // The step to undo or to do again, null when there is none; the position moves past it.  Valid
    // until the next push.
    const UndoStep* undo();
    const UndoStep* redo();

    // The names of the next ones, empty when there is none.
    [[nodiscard]] std::string undo_name() const;
    [[nodiscard]] std::string redo_name() const;

    // A number of what all steps before the position have made of the bank: the same again after an
    // undo and a redo, another after any other change.
    [[nodiscard]] uint64_t revision() const {
        return position > 0 ? steps[position - 1].revision : first_revision;
    }
    // Nothing can be undone any more; another revision.
    void clear();

    static constexpr size_t MAX_STEPS = 200;

  private:
    std::vector<UndoStep> steps{};
    size_t position = 0;         // steps before it can be undone
    uint64_t last_revision = 0;  // that was given
    uint64_t first_revision = 0; // before all steps
};

} // namespace tarquil
