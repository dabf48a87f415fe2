// The plug-in as CLAP hosts see it: a hosted player, and a host's operations on it.

#pragma once

#include <clap/plugin.h>

#include <array>
#include <atomic>
#include <memory>
#include <vector>

#include "formats/clap/clap_host.h"
#include "formats/clap/clap_input.h"
#include "formats/clap/clap_job_runner.h"
#include "formats/clap/clap_window.h"
#include "formats/clap/window_edits.h"
#include "formats/common/instance_player.h"
#include "player/move_gestures.h"

namespace tarquil {

class ClapPlugin {
  public:
    static const clap_plugin_descriptor DESCRIPTOR;

    // `host` stays as long as the object.
    explicit ClapPlugin(const clap_host& host);
    ClapPlugin(const ClapPlugin&) = delete;
    ClapPlugin& operator=(const ClapPlugin&) = delete;

    // The interface, whose `destroy` deletes the object; and the object behind one.
    const clap_plugin* get() const { return &interface; }
    static ClapPlugin& of(const clap_plugin* plugin) {
        return *static_cast<ClapPlugin*>(plugin->plugin_data);
    }

    HostedPlayer& player() { return hosted; }
    ClapHost& host() { return calling; }
    // The jobs of the block that is being rendered.
    [[nodiscard]] const ClapJobRunner& jobs() const { return job_runner; }
    WindowEdits& window_edits() { return edits; }
    // Null where the build has no windows.
    ClapWindow* window();

    bool activate(double rate);
    void deactivate();
    void reset();
    clap_process_status process(const clap_process& process);
    void on_main_thread();

    // Of active plug-ins on the audio thread, of others on the main thread.
    void flush(const clap_input_events* in, const clap_output_events* out);

    // Values, texts and names of keys are all others: main thread.
    void everything_changed();
    // The names of the keys that have one, as they were when they were counted last.
    uint32_t count_note_names();
    [[nodiscard]] const std::vector<Player::KeyName>& note_names() const { return key_names; }

    bool save(const clap_ostream& stream);
    bool load(const clap_istream& stream);

    // A shipped sound becomes the program of the first channel, which is edited from now on; a file
    // is loaded as the player does.  The host is told which it was, or why not.
    bool load_preset(uint32_t kind, const char* location, const char* load_key);

    // In host frames, of the last activation; 0 before.
    [[nodiscard]] uint32_t latency() const { return told_latency; }

  private:
    const char* take_preset(uint32_t kind, const char* location, const char* load_key);
    void play(const clap_input_events* in);
    void play_change(const ControlChange& change, uint32_t frame);
    void tell(const clap_output_events* out, uint32_t frames);
    void tell_programs(const clap_output_events& out);
    void tell_moves(const clap_output_events& out, uint32_t frames);
    void make_stale(StaleFlags flags);

    clap_plugin interface;
    ClapHost calling;
    ClapJobRunner job_runner{calling}; // of the player
    InstancePlayer hosted;
    ClapInput input;
    WindowEdits edits;
    std::unique_ptr<ClapWindow> shown;

    std::vector<Player::KeyName> key_names;

    bool is_active = false;
    uint32_t told_latency = 0;
    double host_rate = 0;
    MoveGestures moves; // of learned controls, while no window is open
    // What each channel plays, as the host knows it.
    std::array<uint8_t, NUM_CHANNELS> told_programs{};
    // What the host is to read again, once it lets the main thread in.
    std::atomic<StaleFlags> stale{0};
};

} // namespace tarquil
