// Choosing a file: folders and files of one kind, and a name to type when it is new.

#pragma once

#include <functional>
#include <string>
#include <vector>

#include "editor/kit/overlay.h"
#include "editor/kit/text_edit.h"
#include "editor/kit/ui_host.h"

namespace tarquil {

class FileBrowser : public Overlay {
  public:
    // `remember` gets the folder that a file was chosen in.  What could not be done is said below
    // the name, which stays, with its folder, to be chosen again.
    FileBrowser(UiHost& ui_host, FileRequest file_request, const std::string& start_folder,
                std::function<void(const std::string& folder)> remember);

    void draw(Canvas& canvas) override;
    void press(const Pointer& pointer) override;
    void wheel(const Pointer& pointer, double steps) override;
    void press_key(const KeyEvent& key) override;
    Spoken spoken() override;
    [[nodiscard]] bool takes_text() const override { return true; }

  private:
    struct Entry {
        std::string name;
        bool is_folder = false;
    };

    void enter(const std::string& new_folder);
    void activate(size_t index);
    void accept();
    void choose(const std::string& path);
    [[nodiscard]] bool is_shown(const std::string& file) const;
    void draw_list(Canvas& canvas) const;
    [[nodiscard]] Rect entry_area(size_t index) const;

    UiHost& host;
    const FileRequest request;
    const std::function<void(const std::string& folder)> on_folder;
    std::string folder;
    std::vector<Entry> entries;
    size_t current = NO_ENTRY;
    size_t first = 0; // shown at the top
    TextEdit name;
    std::string problem; // with the last choice

    static constexpr size_t NO_ENTRY = size_t(-1);
};

} // namespace tarquil
