// What a user does with the file of the edited bank.

#include "editor/view/file_actions.h"

#include <filesystem>

#include "editor/widgets/question.h"

namespace tarquil {

namespace {

constexpr const char* BANK_ENDING = ".tqb";

std::string file_name(const std::string& path) {
    return path.empty() ? "" : std::filesystem::path(path).filename().string();
}

std::string save_to(UiHost& host, const std::string& path, const std::function<void()>& then) {
    std::string problem = host.get_document()->save(path);
    if (!problem.empty())
        return problem;
    host.show_message("Saved " + path, MessageKind::DONE);
    if (then)
        then();
    return "";
}

void choose_bank(UiHost& host) {
    host.choose_file({"Open bank", BANK_ENDING, false, "", [&host](const std::string& path) {
                          std::string problem = host.get_document()->open(path);
                          if (problem.empty())
                              host.show_message("Opened " + path, MessageKind::DONE);
                          return problem;
                      }});
}

} // namespace

void save_document(UiHost& host, const std::function<void()>& then) {
    if (host.get_document() == nullptr)
        return;
    const std::string path = host.get_document()->path();
    if (path.empty()) {
        save_document_as(host, then);
        return;
    }
    const std::string problem = save_to(host, path, then);
    if (!problem.empty())
        host.show_message(problem, MessageKind::FAILED);
}

void save_document_as(UiHost& host, const std::function<void()>& then) {
    if (host.get_document() == nullptr)
        return;
    // The whole path, so that the proposed place is the file's own.
    const std::string path = host.get_document()->path();
    host.choose_file(
        {"Save bank as", BANK_ENDING, true,
         path.empty() ? std::string("my sounds") + BANK_ENDING : path,
         [&host, then](const std::string& chosen) { return save_to(host, chosen, then); }});
}

void open_document(UiHost& host) {
    if (host.get_document() == nullptr)
        return;
    if (host.get_document()->is_changed())
        ask_to_save(host, "opening another bank", [&host] { choose_bank(host); });
    else
        choose_bank(host);
}

void ask_to_save(UiHost& host, const std::string& before_what, const std::function<void()>& then) {
    const std::string name = file_name(host.get_document()->path());
    host.open_overlay(std::make_unique<Question>(
        "Save the changes" + (name.empty() ? "" : " to " + name) + " before " + before_what +
            "?\nWhat is discarded cannot be brought back.",
        std::vector<Question::Answer>{{"Save", [&host, then] { save_document(host, then); }},
                                      {"Discard", then},
                                      {"Cancel", nullptr}}));
}

} // namespace tarquil
