// A file that is replaced as a whole: readers see the old contents or the new, never a part.

#pragma once

#include <string>
#include <string_view>

namespace tarquil {

enum class Durability {
    FLUSHED,   // on disk before the old contents are given up, and when the commit returns
    UNFLUSHED, // for what can be made again
};

// The text goes to a temporary name in the same folder, which `commit` renames.  Links are
// followed, and an existing file's permissions are kept.  A target that is not a regular file
// (/dev/stdout, /dev/full, a pipe) is written directly.
//
// A file that can be written but not replaced (its folder takes no new names, or it is another
// user's in a shared folder) is overwritten where it is, once the new contents are complete and
// there is room for them: only a machine that stops in that moment can lose the old ones.
class AtomicFile {
  public:
    AtomicFile() = default;
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    // Without a commit before it, what was on disk stays.
    ~AtomicFile();

    // False when the target cannot be written; nothing is open then.
    bool open(const std::string& path);

    // Writes `text` as the whole contents and closes.  False when that fails; a regular file keeps
    // its old contents then.
    bool commit(std::string_view text, Durability durability = Durability::FLUSHED);

    // Why the last open or commit failed: an errno.
    [[nodiscard]] int error() const { return problem; }

    // For contents that do not fit into memory: written to the descriptor, which a regular file can
    // also be read from, before a commit of nothing more.
    [[nodiscard]] int get_descriptor() const { return descriptor; }

    // True when the open target is not a regular file.
    [[nodiscard]] bool is_direct() const { return way == Way::DIRECT; }

    // True when it is known that the target will be overwritten where it is.
    [[nodiscard]] bool is_in_place() const { return way == Way::IN_PLACE; }

  private:
    enum class Way { RENAME, IN_PLACE, DIRECT };

    bool open_target(const std::string& path);
    bool open_directly(const std::string& path);
    bool open_temporary(unsigned mode);
    bool open_nameless();
    bool replace();
    bool overwrite() const;
    void discard();

    Way way = Way::RENAME;
    int descriptor = -1; // of what is written now
    std::string target;
    std::string temporary; // its name; empty when it has none
    int problem = 0;       // an errno
};

// What a user is told of a file that is overwritten in place.
std::string in_place_warning(const std::string& path);

} // namespace tarquil
