// Keeps what is edited where the next session finds it, as long as it is in no file.

#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "frame/bank_document.h"
#include "standalone/session_backup.h"

namespace tarquil {

class Autosave {
  public:
    using Time = std::chrono::steady_clock::time_point;
    static constexpr std::chrono::seconds INTERVAL{30};

    // All outlive it.
    Autosave(BankDocument& watched, const EditorModel& edited_model, SessionBackup& store)
        : document(watched), model(edited_model), backup(store) {}

    // Keeps what has changed, an interval after it was kept last, and drops what is saved by now.
    // Often enough.  Empty, or why that failed.
    std::string poll(Time now);
    // The same at once.
    std::string keep_now();

  private:
    BankDocument& document;
    const EditorModel& model;
    SessionBackup& backup;
    std::optional<uint64_t> kept_revision;
    std::optional<Time> changed_since; // which is not kept yet
};

} // namespace tarquil
