// What a session would lose if it ended now.

#include "standalone/session_backup.h"

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "common/load_string.h"
#include "common/platform/user_folder.h"
#include "common/platform/whole_file.h"

namespace tarquil {

namespace {

// In front of the text, for which it is a comment.
constexpr std::string_view PATH_MARK = "# edited: ";

std::string path_line(const std::string& path) {
    const bool is_one_line = path.find_first_of("\r\n") == std::string::npos;
    return std::string(PATH_MARK) + (is_one_line ? path : "") + "\n";
}

std::string path_of(const std::string& text) {
    if (!text.starts_with(PATH_MARK))
        return "";
    return text.substr(PATH_MARK.size(), text.find('\n') - PATH_MARK.size());
}

std::optional<SessionBackup::Lost> read_lost(const std::string& path) {
    SessionBackup::Lost lost;
    struct stat info {};
    if (stat(path.c_str(), &info) != 0 || load_regular_file_to_string(path, lost.text) != 0)
        return std::nullopt;
    lost.path = path_of(lost.text);
    lost.when = info.st_mtime;
    return lost;
}

} // namespace

std::string SessionBackup::usual_folder() {
    const std::string base = user_folder("XDG_STATE_HOME", ".local/state");
    return base.empty() ? "" : base + "/tarquil";
}

SessionBackup::SessionBackup(std::string folder) : place(std::move(folder)) {
    if (place.empty())
        return;
    std::error_code error;
    std::filesystem::create_directories(place, error);
    for (unsigned number = 1; number <= MAX_SLOTS && !found; number++) {
        if (has_text(number) && take_slot(number))
            found = read_lost(text_path(number));
    }
    if (!found)
        take_free_slot();
}

bool SessionBackup::take_slot(unsigned number) {
    auto taken = std::make_unique<FileLock>();
    if (!taken->take(place + "/session-" + std::to_string(number) + ".lock"))
        return false;
    lock = std::move(taken);
    slot = number;
    return true;
}

void SessionBackup::take_free_slot() {
    lock.reset();
    slot = 0;
    for (unsigned number = 1; number <= MAX_SLOTS; number++) {
        if (!has_text(number) && take_slot(number))
            return;
    }
}

std::string SessionBackup::text_path(unsigned number) const {
    return place + "/session-" + std::to_string(number) + ".tqb";
}

bool SessionBackup::has_text(unsigned number) const {
    return access(text_path(number).c_str(), F_OK) == 0;
}

void SessionBackup::take_over() {
    kept = found.has_value();
    found.reset();
}

void SessionBackup::leave() {
    if (!found)
        return;
    found.reset();
    take_free_slot();
}

std::string SessionBackup::keep(const std::string& text, const std::string& path) {
    if (found)
        return "";
    if (slot == 0)
        return (place.empty() ? "no home folder" : place) + ": cannot be written";
    std::string problem = write_whole_file(text_path(slot), path_line(path) + text);
    kept = kept || problem.empty();
    return problem;
}

void SessionBackup::discard() {
    if (kept)
        unlink(text_path(slot).c_str());
    kept = false;
}

} // namespace tarquil
