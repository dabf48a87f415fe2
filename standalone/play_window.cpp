// The editor's window of the stand-alone program.

#include "standalone/play_window.h"

#include <cstdlib>
#include <ctime>
#include <filesystem>

#include "common/failure.h"
#include "editor/widgets/question.h"
#include "editor/window/x_error_trap.h"
#include "frame/editor_frame.h"
#include "frame/player_synth.h"
#include "standalone/autosave.h"
#include "standalone/device_keeper.h"
#include "standalone/run_player.h"

namespace tarquil {

namespace {

// A player with what is told of its sound.
class PlaySynth : public PlayerSynth {
  public:
    using PlayerSynth::PlayerSynth;
    [[nodiscard]] EditorNotice read_notice() override { return notice; }
    EditorNotice notice;
};

EditorNotice notice_of(const SoundState& sound) {
    if (!sound.problem.empty())
        return {EditorNotice::Kind::WARNING, "No sound: " + sound.problem};
    std::string text = sound.device;
    if (sound.num_dropouts > 0)
        text += ", " + std::to_string(sound.num_dropouts) +
                (sound.num_dropouts == 1 ? " dropout" : " dropouts");
    return {EditorNotice::Kind::STATE, text};
}

std::string date_and_time(std::time_t when) {
    char text[64] = "";
    std::tm local{};
    localtime_r(&when, &local);
    std::strftime(text, sizeof(text), "%d %B, %H:%M", &local);
    return text;
}

class EditorPlayWindow : public PlayWindow {
  public:
    EditorPlayWindow(Player& player, const PlaySettings& play_settings)
        : settings(play_settings), synth(player), editor(player, synth),
          backup(SessionBackup::usual_folder()) {
        editor.plays_computer_keys = true;
        editor.keep_document(settings.bank_path);
        autosave.emplace(editor.get_document(), editor.get_model(), backup);
    }
    EditorPlayWindow(const EditorPlayWindow&) = delete;
    EditorPlayWindow& operator=(const EditorPlayWindow&) = delete;
    ~EditorPlayWindow() override {
        on_display_loss(nullptr);
        shown = nullptr;
    }

    bool open() {
        if (!editor.open(0))
            return false;
        shown = this;
        on_display_loss([] { shown->end_without_display(); });
        if (backup.lost())
            offer_lost();
        return true;
    }

    bool idle() override {
        editor.idle();
        const std::string problem = autosave->poll(std::chrono::steady_clock::now());
        if (!problem.empty())
            editor.get_ui()->show_message("Unsaved edits are not kept: " + problem,
                                          MessageKind::FAILED);
        is_ended = editor.is_closed_by_user();
        return !is_ended;
    }

    void show_sound(const SoundState& sound) override { synth.notice = notice_of(sound); }

    void keep_unsaved() override {
        if (is_ended) {
            backup.discard(); // saved, or not wanted
            return;
        }
        if (!editor.get_document().is_changed())
            return;
        const std::string problem = autosave->keep_now();
        settings.say(problem.empty() ? "the unsaved edits are kept; the next start offers them"
                                     : "the unsaved edits are lost: " + problem);
    }

  private:
    // Nothing of the display may be used any more.
    [[noreturn]] void end_without_display() {
        settings.say("the display is gone");
        keep_unsaved();
        std::_Exit(STATUS_CANNOT);
    }

    void offer_lost() {
        const std::string& path = backup.lost()->path;
        const std::string name =
            path.empty() ? "an untitled bank" : std::filesystem::path(path).filename().string();
        editor.get_ui()->open_overlay(std::make_unique<Question>(
            "Tarquil ended on " + date_and_time(backup.lost()->when) + " with unsaved edits of " +
                name + ".\nRestore them?",
            std::vector<Question::Answer>{{"Restore", [this] { restore(); }},
                                          {"Discard",
                                           [this] {
                                               backup.take_over();
                                               backup.discard();
                                           }},
                                          {"Ask next time", [this] { backup.leave(); }}}));
    }

    void restore() {
        const SessionBackup::Lost lost = *backup.lost();
        const std::string problem = editor.get_document().restore(lost.text, lost.path);
        if (problem.empty()) {
            backup.take_over();
            editor.get_ui()->show_message("Restored; it is not saved yet", MessageKind::DONE);
        } else {
            backup.leave();
            editor.get_ui()->show_message("Not restored: " + problem, MessageKind::FAILED);
        }
    }

    static EditorPlayWindow* shown; // by the process

    const PlaySettings& settings;
    PlaySynth synth;
    EditorFrame editor;
    SessionBackup backup;
    std::optional<Autosave> autosave;
    bool is_ended = false; // by the user
};

EditorPlayWindow* EditorPlayWindow::shown = nullptr;

} // namespace

std::unique_ptr<PlayWindow> open_play_window(Player& player, const PlaySettings& settings,
                                             std::string& reason) {
    auto window = std::make_unique<EditorPlayWindow>(player, settings);
    if (window->open())
        return window;
    reason = "no window can be opened: is DISPLAY set? --no-window plays without one";
    return nullptr;
}

} // namespace tarquil
