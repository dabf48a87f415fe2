// A small CLAP host: loads the built module, drives it by its C interface alone, and notes what it
// is asked for.

#pragma once

#include <clap/entry.h>
#include <clap/ext/audio-ports.h>
#include <clap/ext/gui.h>
#include <clap/ext/latency.h>
#include <clap/ext/note-ports.h>
#include <clap/ext/params.h>
#include <clap/ext/state.h>
#include <clap/ext/thread-check.h>
#include <clap/ext/timer-support.h>
#include <clap/plugin-factory.h>

#include <atomic>
#include <deque>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "tests/formats/common/format_song.h"

namespace tarquil {

inline constexpr char PLUGIN_ID[] = "org.tarquil.tarquil";

// An event in a host's memory.
struct HostEvent {
    alignas(8) unsigned char bytes[128] = {};

    [[nodiscard]] const clap_event_header& header() const {
        return *reinterpret_cast<const clap_event_header*>(bytes);
    }
    template <typename Event> [[nodiscard]] const Event& as() const {
        return *reinterpret_cast<const Event*>(bytes);
    }
};

class ClapTestHost {
  public:
    // What a host has beside what this one has: null for none.
    using MoreExtensions = const void* (*)(const std::string& id);

    // `is_bare`: a host that has no extension.  It starts with `state`, a new instance's if empty.
    explicit ClapTestHost(bool is_bare = false, MoreExtensions more = nullptr,
                          const std::string& state = plain_state());
    ClapTestHost(const ClapTestHost&) = delete;
    ClapTestHost& operator=(const ClapTestHost&) = delete;
    ~ClapTestHost();

    static const clap_plugin_entry& entry();
    static const clap_plugin_factory& factory();

    template <typename Extension> const Extension& get(const char* id) const {
        const void* const found = plugin->get_extension(plugin, id);
        if (found == nullptr)
            throw std::runtime_error(std::string("no extension ") + id);
        return *static_cast<const Extension*>(found);
    }
    const clap_plugin_params& params() const { return get<clap_plugin_params>(CLAP_EXT_PARAMS); }

    bool activate(double rate = 44100, uint32_t max_frames = 4096);
    void deactivate();

    // Events of the next block or flush, in the order of the calls.
    void note(uint16_t type, int key, int channel = 0, uint32_t frame = 0, int32_t id = -1,
              double velocity = 1.0, int port = 0);
    void midi(const std::array<uint8_t, 3>& message, uint32_t frame = 0);
    void set(clap_id id, double value, uint32_t frame = 0, void* cookie = nullptr);
    void add_transport(const clap_event_transport& now, uint32_t frame);
    // The last one, to be changed.
    template <typename Event> Event& last() {
        return *reinterpret_cast<Event*>(input.back().bytes);
    }

    // They take the events; the thread counts as the audio thread meanwhile.  What the plug-in puts
    // out is added to `output`.
    clap_process_status process(float* left, float* right, uint32_t frames);
    StereoSound render(uint32_t frames);
    void flush();
    // A block of this host's events with an output.
    clap_process make_block(clap_audio_buffer& audio, float** sides, uint32_t frames,
                            const clap_input_events& in, const clap_output_events& out) const;
    // The plug-in's own calls, for watches.
    void process_only(const clap_process& block) noexcept;
    void flush_only(const clap_input_events& in, const clap_output_events& out) noexcept;
    void reset_only() noexcept;
    clap_input_events events_in();
    clap_output_events events_out();

    // What the plug-in has asked the main thread for.
    void idle();

    double value(clap_id id);
    std::string text(clap_id id, double value);
    // The stream takes or gives `piece` bytes at a time.
    std::string save(size_t piece = 4096);
    bool load(const std::string& state, size_t piece = 4096);

    [[nodiscard]] bool is_on_main_thread() const {
        return std::this_thread::get_id() == main_thread;
    }

    const clap_plugin* plugin = nullptr;
    std::deque<HostEvent> input;
    std::vector<HostEvent> output;
    bool takes_output = true;
    // What blocks begin with.
    clap_event_transport transport{};
    bool has_transport = false;

    // What the plug-in has asked for.
    std::atomic<int> flush_requests{0};
    std::atomic<int> process_requests{0};
    std::atomic<int> callback_requests{0};
    int dirty_marks = 0;
    int latency_changes = 0;
    clap_param_rescan_flags rescanned = 0;
    std::atomic<int> wrong_threads{0};

  private:
    template <typename Event> Event& add(uint16_t type, uint32_t frame);

    const bool has_extensions;
    const MoreExtensions more_extensions;
    clap_host host;
    const std::thread::id main_thread = std::this_thread::get_id();
};

// What a host says of the song that follows a tempo at that frame of it.
clap_event_transport transport_at(uint32_t frame, double rate);

} // namespace tarquil
