// The file that keeps the edited bank, for an editor that belongs to a program of its own; in a
// host the session keeps it.

#pragma once

#include <string>

namespace tarquil {

// Every call comes from the window's thread.
class EditorDocument {
  public:
    EditorDocument() = default;
    EditorDocument(const EditorDocument&) = delete;
    EditorDocument& operator=(const EditorDocument&) = delete;
    virtual ~EditorDocument() = default;

    // Empty while it has no file.
    [[nodiscard]] virtual const std::string& path() const = 0;
    // Edits would be lost if the program ended now.
    [[nodiscard]] virtual bool is_changed() const = 0;

    // Writes the bank and the channels' programs to `new_path`, which is its file from then on, or
    // takes them from there; nothing can be undone behind that.  Empty, or why it could not be
    // done.
    virtual std::string save(const std::string& new_path) = 0;
    virtual std::string open(const std::string& new_path) = 0;
};

} // namespace tarquil
