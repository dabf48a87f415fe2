// What a session would lose if it ended now, kept in a file that the next session finds.
//
// Each session that runs has a slot of its own, session-1, session-2 and so on: a lock, which goes
// with the process, and beside it the text, while there is any.  A text whose lock is free was left
// by a session that did not end well.

#pragma once

#include <ctime>
#include <memory>
#include <optional>
#include <string>

#include "common/platform/file_lock.h"

namespace tarquil {

class SessionBackup {
  public:
    struct Lost {
        std::string text; // as it was kept
        std::string path; // of the file that was edited, empty for none
        std::time_t when = 0;
    };

    // Keeps nothing when `folder` cannot be made or locked in.
    explicit SessionBackup(std::string folder);

    // $XDG_STATE_HOME/tarquil, else ~/.local/state/tarquil; empty without either.
    static std::string usual_folder();

    // What an earlier session has left.  It stays until one of these is called: `take_over`, when
    // it is what this session edits now, or was not wanted; `leave`, when a later session is to
    // find it.
    [[nodiscard]] const std::optional<Lost>& lost() const { return found; }
    void take_over();
    void leave();

    // Keeps this instead of what was kept last, which is nothing after `discard`.  Empty, or why
    // that failed.  While there is something lost, nothing can be kept.
    std::string keep(const std::string& text, const std::string& path);
    void discard();
    [[nodiscard]] bool has_kept() const { return kept; }

  private:
    bool take_slot(unsigned number);
    void take_free_slot();
    [[nodiscard]] std::string text_path(unsigned number) const;
    [[nodiscard]] bool has_text(unsigned number) const;

    static constexpr unsigned MAX_SLOTS = 64;

    const std::string place;
    unsigned slot = 0; // 0: none
    std::unique_ptr<FileLock> lock;
    std::optional<Lost> found;
    bool kept = false;
};

} // namespace tarquil
