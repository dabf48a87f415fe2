// A file that is replaced as a whole: readers see the old contents or the new, never a part.

#pragma once

#include <string>
#include <string_view>

namespace tarquil {

// The text goes to a temporary name in the same folder, which `commit` renames.  Links are
// followed, and an existing file's permissions are kept.  A target that is not a regular file
// (/dev/stdout, /dev/full, a pipe) is written directly.
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
    bool commit(std::string_view text);

    // For contents that do not fit into memory: written to the descriptor, which a regular file can
    // also be read from, before a commit of nothing more.
    [[nodiscard]] int get_descriptor() const { return descriptor; }

    // True when the open target is not a regular file.
    [[nodiscard]] bool is_direct() const { return temporary.empty(); }

  private:
    bool open_directly(const std::string& path);
    bool open_temporary(unsigned mode);
    void discard();

    int descriptor = -1;
    std::string target;
    std::string temporary; // empty when the target is written directly
};

} // namespace tarquil
