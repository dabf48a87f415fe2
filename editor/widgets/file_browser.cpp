// Choosing a file.

#include "editor/widgets/file_browser.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "editor/kit/window_size.h"
#include "editor/widgets/message_line.h"
#include "editor/widgets/question.h"

namespace tarquil {

namespace {

namespace fs = std::filesystem;

constexpr Rect AREA{(WINDOW_WIDTH - 620) / 2, 60, 620, 560};
constexpr Rect LIST{AREA.x + 16, AREA.y + 74, AREA.w - 32, AREA.h - 168};
constexpr double FILE_ROW_HEIGHT = 24.0;
constexpr auto SHOWN_ROWS = size_t(LIST.h / FILE_ROW_HEIGHT);
constexpr Rect UP{AREA.x + 16, AREA.y + 40, 44, 26};
constexpr Rect NAME{AREA.x + 16, AREA.y + AREA.h - 82, AREA.w - 32, 26};
constexpr Rect PROBLEM{AREA.x + 16, AREA.y + AREA.h - 42, AREA.w - 260, 28};
constexpr Rect CANCEL{AREA.x + AREA.w - 116, AREA.y + AREA.h - 42, 100, 28};
constexpr Rect ACCEPT{AREA.x + AREA.w - 224, AREA.y + AREA.h - 42, 100, 28};

std::string home_folder() {
    const char* home = std::getenv("HOME");
    return home != nullptr && home[0] != '\0' ? home : "/";
}

void draw_button(Canvas& canvas, const Rect& area, const std::string& text, Color color) {
    canvas.fill(area, color, 4);
    canvas.frame(area, theme::OUTLINE, 4);
    canvas.text(area, text, {theme::NORMAL, theme::TEXT, Align::CENTER});
}

} // namespace

FileBrowser::FileBrowser(UiHost& ui_host, FileRequest file_request, const std::string& start_folder,
                         std::function<void(const std::string& folder)> remember)
    : host(ui_host), request(std::move(file_request)), on_folder(std::move(remember)),
      name(request.name) {
    std::error_code error;
    enter(!start_folder.empty() && fs::is_directory(start_folder, error) ? start_folder
                                                                         : home_folder());
}

void FileBrowser::enter(const std::string& new_folder) {
    folder = new_folder;
    entries.clear();
    current = NO_ENTRY;
    first = 0;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code ignored;
        const std::string found = entry->path().filename().string();
        const bool is_folder = entry->is_directory(ignored);
        if (!found.starts_with('.') && (is_folder || is_shown(found)))
            entries.push_back({found, is_folder});
    }
    std::sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) {
        return a.is_folder != b.is_folder ? a.is_folder : a.name < b.name;
    });
}

bool FileBrowser::is_shown(const std::string& file) const {
    return file.ends_with(request.ending) ||
           (!request.also_shown.empty() && file.ends_with(request.also_shown));
}

Rect FileBrowser::entry_area(size_t index) const {
    return {LIST.x, LIST.y + FILE_ROW_HEIGHT * double(index - first), LIST.w, FILE_ROW_HEIGHT};
}

void FileBrowser::draw(Canvas& canvas) {
    canvas.fill({0, 0, WINDOW_WIDTH, FULL_HEIGHT}, theme::BACKGROUND, 0, 0.6);
    canvas.fill(AREA, theme::PANEL, 6);
    canvas.frame(AREA, theme::OUTLINE, 6);
    canvas.text({AREA.x + 16, AREA.y + 10, AREA.w - 32, 24}, request.title,
                {theme::LARGE, theme::TEXT, Align::LEFT, Weight::BOLD});
    draw_button(canvas, UP, "Up", theme::CONTROL);
    canvas.text({UP.right() + 10, UP.y, AREA.right() - UP.right() - 26, UP.h}, folder,
                {theme::NORMAL, theme::TEXT_MUTED});
    draw_list(canvas);
    name.draw(canvas, NAME, true);
    if (name.get_text().empty())
        canvas.text(NAME.inset(10, 0), request.is_new ? "file name" : "file name or path",
                    {theme::NORMAL, theme::TEXT_DIM});
    if (!problem.empty())
        draw_message(canvas, PROBLEM, problem, MessageKind::FAILED);
    draw_button(canvas, ACCEPT, request.is_new ? "Save" : "Open", theme::ACCENT_DIM);
    draw_button(canvas, CANCEL, "Cancel", theme::CONTROL);
}

void FileBrowser::draw_list(Canvas& canvas) const {
    canvas.fill(LIST.inset(0, -2), theme::WELL, 4);
    canvas.clip(LIST);
    for (size_t i = first; i < std::min(entries.size(), first + SHOWN_ROWS); i++) {
        const Rect row = entry_area(i);
        if (i == current)
            canvas.fill(row, theme::ACCENT_DIM, 3);
        canvas.text(row.inset(10, 0), entries[i].name + (entries[i].is_folder ? "/" : ""),
                    {theme::NORMAL, entries[i].is_folder ? theme::ACCENT : theme::TEXT});
    }
    canvas.unclip();
    if (entries.empty())
        canvas.text(LIST, "No folders and no " + request.ending + " files here",
                    {theme::NORMAL, theme::TEXT_DIM, Align::CENTER});
    if (entries.size() > SHOWN_ROWS) {
        const double part = LIST.h / double(entries.size());
        canvas.fill({LIST.right() - 6, LIST.y + part * double(first), 4, part * double(SHOWN_ROWS)},
                    theme::OUTLINE, 2);
    }
}

void FileBrowser::activate(size_t index) {
    const std::string path = (fs::path(folder) / entries[index].name).string();
    if (entries[index].is_folder)
        enter(path);
    else
        name = TextEdit(entries[index].name);
}

void FileBrowser::choose(const std::string& path) {
    // What follows may open something else: this is no longer there then.
    problem = request.choose(path);
    if (!problem.empty()) {
        // The path is in sight.
        if (problem.starts_with(path + ": "))
            problem.erase(0, path.size() + 2);
        return;
    }
    on_folder(fs::path(path).parent_path().string());
    finish();
}

void FileBrowser::accept() {
    if (name.get_text().empty()) {
        if (current != NO_ENTRY)
            activate(current);
        return;
    }
    // A path with a "/" in front leads anywhere.
    std::string path = (fs::path(folder) / name.get_text()).string();
    std::error_code error;
    if (fs::is_directory(path, error)) {
        name = TextEdit();
        enter(path);
        return;
    }
    if (request.is_new && !path.ends_with(request.ending))
        path += request.ending;
    if (!request.is_new || !fs::exists(path, error)) {
        choose(path);
        return;
    }
    host.open_overlay(std::make_unique<Question>(
        fs::path(path).filename().string() + " exists. Replace it?",
        std::vector<Question::Answer>{{"Replace", [this, path] { choose(path); }},
                                      {"Cancel", nullptr}}));
}

void FileBrowser::press(const Pointer& pointer) {
    problem.clear();
    if (CANCEL.contains(pointer.at)) {
        finish();
    } else if (ACCEPT.contains(pointer.at)) {
        accept();
    } else if (UP.contains(pointer.at)) {
        enter(fs::path(folder).parent_path().string());
    } else if (LIST.contains(pointer.at)) {
        const size_t index = first + size_t((pointer.at.y - LIST.y) / FILE_ROW_HEIGHT);
        if (index >= entries.size())
            return;
        current = index;
        if (!entries[index].is_folder || pointer.is_double) {
            const bool is_file = !entries[index].is_folder;
            activate(index);
            if (is_file && pointer.is_double)
                accept();
        }
    }
}

void FileBrowser::wheel(const Pointer& /*pointer*/, double steps) {
    constexpr double ROWS_PER_STEP = 3.0;
    const size_t last = entries.size() > SHOWN_ROWS ? entries.size() - SHOWN_ROWS : 0;
    first = size_t(std::clamp(double(first) - steps * ROWS_PER_STEP, 0.0, double(last)));
}

void FileBrowser::press_key(const KeyEvent& key) {
    switch (key.key) {
    case Key::ESCAPE:
        finish();
        return;
    case Key::ENTER:
        accept();
        return;
    case Key::UP:
    case Key::DOWN:
        if (entries.empty())
            return;
        if (current == NO_ENTRY)
            current = 0;
        else if (key.key == Key::UP)
            current = current > 0 ? current - 1 : 0;
        else
            current = std::min(current + 1, entries.size() - 1);
        first = std::min(first, current);
        if (current >= first + SHOWN_ROWS)
            first = current + 1 - SHOWN_ROWS;
        name = TextEdit(entries[current].is_folder ? "" : entries[current].name);
        return;
    default:
        problem.clear();
        name.press_key(key);
    }
}

Spoken FileBrowser::spoken() {
    Spoken dialog{SpokenRole::DIALOG, request.title};
    dialog.help = problem.empty() ? folder : problem;
    dialog.area = AREA;
    const auto add_button = [&](const std::string& text, const Rect& area,
                                std::function<void()> press) {
        Spoken button{SpokenRole::BUTTON, text};
        button.area = area;
        button.press = std::move(press);
        dialog.items.push_back(std::move(button));
    };
    add_button("Up", UP, [this] { enter(fs::path(folder).parent_path().string()); });
    Spoken list{SpokenRole::LIST, folder};
    list.area = LIST;
    for (size_t i = first; i < std::min(entries.size(), first + SHOWN_ROWS); i++) {
        Spoken item{SpokenRole::ITEM, entries[i].name + (entries[i].is_folder ? "/" : "")};
        item.area = entry_area(i);
        item.is_on = item.is_focused = i == current;
        item.press = [this, i] { activate(i); };
        list.items.push_back(std::move(item));
    }
    dialog.items.push_back(std::move(list));
    Spoken field = name.spoken(request.is_new ? "File name" : "File name or path", NAME);
    field.is_focused = current == NO_ENTRY;
    field.type = [this](const std::string& text) {
        name = TextEdit(text);
        return true;
    };
    dialog.items.push_back(std::move(field));
    add_button(request.is_new ? "Save" : "Open", ACCEPT, [this] { accept(); });
    add_button("Cancel", CANCEL, [this] { finish(); });
    return dialog;
}

} // namespace tarquil
