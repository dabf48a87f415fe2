// What widgets ask of the window around them.

#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>

#include "editor/kit/overlay.h"
#include "editor/model/editor_document.h"
#include "editor/model/editor_model.h"
#include "editor/model/morph.h"
#include "editor/model/output_scope.h"
#include "softsynth/parameters/constants.h"
#include "softsynth/parameters/tempo_values.h"

namespace tarquil {

class ResponseWorker;

// A sound on its way to a channel.
struct CarriedSound {
    std::string name;
    Point at;
    std::optional<unsigned> channel; // that would take it here
};

// What the pages show apart from the sound itself.
struct ViewState {
    int plot_note = 60;         // of waves and of filters that follow the key
    unsigned selected_slot = 0; // of the bank page
    OutputScope scope{};
    bool is_time_logarithmic = true; // on the envelopes' plots
    // What follows the host's tempo, while it does; the tempo in quarter notes a minute.
    TempoValues times{};
    double tempo = 120.0;
    [[nodiscard]] double seconds_per_quarter() const { return 60.0 / tempo; }
    [[nodiscard]] double samples_per_quarter() const { return SAMPLE_RATE * 60.0 / tempo; }
    std::optional<CarriedSound> carried{};
    std::set<std::string> locked_sections{}; // that a sound left to chance keeps
    int chance_percent = 25;                 // how far a value may go
    MorphLength morph_length{};              // of a morph that goes by itself
    bool morph_swings = false;               // to and fro
};

// A file to be chosen.
struct FileRequest {
    std::string title;
    std::string ending;  // ".tqi": the files shown first, and added to a name that has none
    bool is_new = false; // to be written: a name can be typed, and a file there is asked about
    std::string name;    // proposed
    // Empty when it is done; else the reason, and the user can choose again.
    std::function<std::string(const std::string& path)> choose;
    std::string also_shown{}; // the ending of other files that make sense
};

// What a message at the bottom tells of.
enum class MessageKind { NOTE, DONE, FAILED };

class UiHost {
  public:
    UiHost() = default;
    UiHost(const UiHost&) = delete;
    UiHost& operator=(const UiHost&) = delete;
    virtual ~UiHost() = default;

    virtual EditorModel& get_model() = 0;
    virtual ViewState& get_view_state() = 0;
    virtual const EditorMeters& get_meters() = 0;
    virtual ResponseWorker& get_responses() = 0;

    virtual void open_overlay(std::unique_ptr<Overlay> overlay) = 0;
    virtual void choose_file(FileRequest request) = 0;
    // The channel that takes what is dropped at a place.
    [[nodiscard]] virtual std::optional<unsigned> channel_at(Point at) = 0;
    // A line at the bottom until the next input.
    virtual void show_message(const std::string& text, MessageKind kind) = 0;
    void show_message(const std::string& text) { show_message(text, MessageKind::NOTE); }

    // The desktop's, as text; empty where there is none.
    virtual void set_clipboard(const std::string& /*text*/) {}
    virtual std::string get_clipboard() { return ""; }

    [[nodiscard]] virtual ThemeKind get_theme() { return ThemeKind::DARK; }
    virtual void set_theme(ThemeKind /*theme*/) {}

    // Whether held notes are struck again when a control has been edited that they do not hear.
    [[nodiscard]] virtual bool strikes_again() { return false; }
    virtual void set_strikes_again(bool /*is_on*/) {}

    // Null in hosts.
    virtual EditorDocument* get_document() { return nullptr; }
};

} // namespace tarquil
