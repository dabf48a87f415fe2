// Sound and MIDI through a JACK server, at its rate.

#include <algorithm>
#include <atomic>

#include "standalone/device_player.h"
#include "standalone/devices.h"
#include "standalone/jack_library.h"

namespace tarquil {

namespace {

constexpr const char* CLIENT_NAME = "Tarquil";

class JackDevice : public AudioDevice {
  public:
    JackDevice(const JackLibrary& library, DevicePlayer& played, jack_client_t* made_client)
        : jack(library), player(played), client(made_client), rate(jack.get_sample_rate(client)) {
        left = add_port("left", JACK_DEFAULT_AUDIO_TYPE, JackPortIsOutput);
        right = add_port("right", JACK_DEFAULT_AUDIO_TYPE, JackPortIsOutput);
        midi = add_port("midi", JACK_DEFAULT_MIDI_TYPE, JackPortIsInput);
        jack.set_process_callback(client, process, this);
        jack.set_xrun_callback(client, count_dropout, this);
        jack.set_sample_rate_callback(client, follow_rate, this);
        jack.set_latency_callback(client, tell_latency, this);
        jack.on_shutdown(
            client, [](void* device) { static_cast<JackDevice*>(device)->lost = true; }, this);
    }
    JackDevice(const JackDevice&) = delete;
    JackDevice& operator=(const JackDevice&) = delete;
    ~JackDevice() override { jack.client_close(client); }

    // Nothing is played before the speakers are connected, so that they hear a song's start.
    bool start() {
        if (left == nullptr || right == nullptr || midi == nullptr || !player.activate(rate) ||
            jack.activate(client) != 0)
            return false;
        connect_speakers();
        is_connected = true;
        jack.recompute_total_latencies(client);
        return true;
    }

    [[nodiscard]] std::string name() const override {
        return "JACK, " + std::to_string(jack.get_buffer_size(client)) + " frames at " +
               std::to_string(rate) + " Hz";
    }
    [[nodiscard]] bool is_lost() const override { return lost; }
    [[nodiscard]] uint32_t num_dropouts() const override { return dropouts; }

  private:
    jack_port_t* add_port(const char* port_name, const char* type, unsigned long flags) {
        return jack.port_register(client, port_name, type, flags, 0);
    }

    void connect_speakers() {
        const char** speakers = jack.get_ports(client, nullptr, JACK_DEFAULT_AUDIO_TYPE,
                                               JackPortIsPhysical | JackPortIsInput);
        if (speakers == nullptr)
            return;
        jack_port_t* const sides[] = {left, right};
        for (int side = 0; side < 2 && speakers[side] != nullptr; side++)
            jack.connect(client, jack.port_name(sides[side]), speakers[side]);
        jack.free(speakers);
    }

    static int process(jack_nframes_t frames, void* device) {
        auto* self = static_cast<JackDevice*>(device);
        const JackLibrary& jack = self->jack;
        auto* left = static_cast<float*>(jack.port_get_buffer(self->left, frames));
        auto* right = static_cast<float*>(jack.port_get_buffer(self->right, frames));
        if (!self->is_connected || self->lost) {
            std::fill_n(left, frames, 0.0F);
            std::fill_n(right, frames, 0.0F);
            return 0;
        }
        self->player.begin_block(left, right, frames);
        void* messages = jack.port_get_buffer(self->midi, frames);
        const uint32_t num_messages = jack.midi_get_event_count(messages);
        for (uint32_t i = 0; i < num_messages; i++) {
            jack_midi_event_t event;
            if (jack.midi_event_get(&event, messages, i) == 0)
                self->player.play({event.buffer, event.size}, event.time);
        }
        self->player.end_block();
        return 0;
    }

    static int count_dropout(void* device) {
        static_cast<JackDevice*>(device)->dropouts++;
        return 0;
    }

    // The converter can not change under a block: the device is opened anew.
    static int follow_rate(jack_nframes_t new_rate, void* device) {
        auto* self = static_cast<JackDevice*>(device);
        if (new_rate != self->rate)
            self->lost = true;
        return 0;
    }

    // The notes' way through the player, in both directions.
    static void tell_latency(jack_latency_callback_mode_t mode, void* device) {
        auto* self = static_cast<JackDevice*>(device);
        const JackLibrary& jack = self->jack;
        const uint32_t own = self->player.latency_frames();
        jack_latency_range_t range;
        if (mode == JackCaptureLatency) {
            jack.port_get_latency_range(self->midi, mode, &range);
            range.min += own;
            range.max += own;
            jack.port_set_latency_range(self->left, mode, &range);
            jack.port_set_latency_range(self->right, mode, &range);
            return;
        }
        jack_latency_range_t other;
        jack.port_get_latency_range(self->left, mode, &range);
        jack.port_get_latency_range(self->right, mode, &other);
        range.min = std::min(range.min, other.min) + own;
        range.max = std::max(range.max, other.max) + own;
        jack.port_set_latency_range(self->midi, mode, &range);
    }

    const JackLibrary& jack;
    DevicePlayer& player;
    jack_client_t* client;
    const jack_nframes_t rate;
    jack_port_t* left = nullptr;
    jack_port_t* right = nullptr;
    jack_port_t* midi = nullptr;
    std::atomic<bool> is_connected{false};
    std::atomic<bool> lost{false};
    std::atomic<uint32_t> dropouts{0};
};

jack_client_t* open_client(const JackLibrary& jack, std::string& reason) {
    jack_client_t* client = jack.client_open(CLIENT_NAME, JackNoStartServer, nullptr);
    if (client == nullptr)
        reason = "no JACK server runs";
    return client;
}

// What the user asks of the server.
bool fit_server(const JackLibrary& jack, jack_client_t* client, const DeviceChoice& choice,
                std::string& reason) {
    const jack_nframes_t rate = jack.get_sample_rate(client);
    if (choice.rate.value_or(rate) != rate) {
        reason = "the JACK server runs at " + std::to_string(rate) + " Hz";
        return false;
    }
    if (choice.period && *choice.period != jack.get_buffer_size(client) &&
        jack.set_buffer_size(client, *choice.period) != 0) {
        reason = "the JACK server takes no blocks of " + std::to_string(*choice.period) + " frames";
        return false;
    }
    return true;
}

} // namespace

std::unique_ptr<AudioDevice> open_jack_device(DevicePlayer& player, const DeviceChoice& choice,
                                              std::string& reason) {
    const JackLibrary* jack = JackLibrary::get(reason);
    if (jack == nullptr)
        return nullptr;
    jack_client_t* client = open_client(*jack, reason);
    if (client == nullptr)
        return nullptr;
    if (!fit_server(*jack, client, choice, reason)) {
        jack->client_close(client);
        return nullptr;
    }
    auto device = std::make_unique<JackDevice>(*jack, player, client);
    if (!device->start()) {
        reason = "the JACK server gives no ports";
        return nullptr;
    }
    return device;
}

std::vector<DeviceName> list_jack_devices() {
    std::string meaning;
    if (const JackLibrary* jack = JackLibrary::get(meaning)) {
        if (jack_client_t* client = open_client(*jack, meaning)) {
            meaning = "the server at " + std::to_string(jack->get_sample_rate(client)) + " Hz";
            jack->client_close(client);
        }
    }
    return {{"jack", meaning}};
}

} // namespace tarquil
