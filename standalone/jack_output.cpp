// Sound and MIDI through a JACK server that runs at the engine's rate.

#include <jack/jack.h>
#include <jack/midiport.h>

#include "softsynth/parameters/constants.h"
#include "standalone/audio_output.h"
#include "standalone/device_player.h"

namespace tarquil {

namespace {

class JackOutput : public AudioOutput {
  public:
    JackOutput(Player& played, jack_client_t* made_client) : player(played), client(made_client) {
        left = add_port("left", JACK_DEFAULT_AUDIO_TYPE, JackPortIsOutput);
        right = add_port("right", JACK_DEFAULT_AUDIO_TYPE, JackPortIsOutput);
        midi = add_port("midi", JACK_DEFAULT_MIDI_TYPE, JackPortIsInput);
        jack_set_process_callback(client, process, this);
    }
    JackOutput(const JackOutput&) = delete;
    JackOutput& operator=(const JackOutput&) = delete;
    ~JackOutput() override { jack_client_close(client); }

    bool start() {
        if (left == nullptr || right == nullptr || midi == nullptr || jack_activate(client) != 0)
            return false;
        connect_speakers();
        return true;
    }

    [[nodiscard]] std::string name() const override {
        return "JACK, " + std::to_string(jack_get_buffer_size(client)) + " frames";
    }

  private:
    jack_port_t* add_port(const char* port_name, const char* type, unsigned long flags) {
        return jack_port_register(client, port_name, type, flags, 0);
    }

    void connect_speakers() {
        const char** speakers = jack_get_ports(client, nullptr, JACK_DEFAULT_AUDIO_TYPE,
                                               JackPortIsPhysical | JackPortIsInput);
        if (speakers == nullptr)
            return;
        jack_port_t* const sides[] = {left, right};
        for (int side = 0; side < 2 && speakers[side] != nullptr; side++)
            jack_connect(client, jack_port_name(sides[side]), speakers[side]);
        jack_free(speakers);
    }

    static int process(jack_nframes_t frames, void* output) {
        auto* self = static_cast<JackOutput*>(output);
        void* messages = jack_port_get_buffer(self->midi, frames);
        for (uint32_t i = 0; i < jack_midi_get_event_count(messages); i++) {
            jack_midi_event_t event;
            if (jack_midi_event_get(&event, messages, i) == 0)
                self->player.play(event.buffer, uint32_t(event.size), int32_t(event.time));
        }
        self->player.render(static_cast<float*>(jack_port_get_buffer(self->left, frames)),
                            static_cast<float*>(jack_port_get_buffer(self->right, frames)), frames);
        return 0;
    }

    DevicePlayer player;
    jack_client_t* client;
    jack_port_t* left = nullptr;
    jack_port_t* right = nullptr;
    jack_port_t* midi = nullptr;
};

} // namespace

std::unique_ptr<AudioOutput> make_jack_output(Player& played, std::string& reason) {
    jack_set_error_function([](const char*) {});
    jack_set_info_function([](const char*) {});
    jack_client_t* client = jack_client_open("Tarquil", JackNoStartServer, nullptr);
    if (client == nullptr) {
        reason = "no JACK server runs";
        return nullptr;
    }
    const jack_nframes_t rate = jack_get_sample_rate(client);
    if (rate != jack_nframes_t(SAMPLE_RATE)) {
        reason = "the JACK server runs at " + std::to_string(rate) + " Hz, not at 44100";
        jack_client_close(client);
        return nullptr;
    }
    auto output = std::make_unique<JackOutput>(played, client);
    if (!output->start()) {
        reason = "the JACK server gives no ports";
        return nullptr;
    }
    return output;
}

} // namespace tarquil
