// Sound through the default ALSA device, notes from an ALSA sequencer port.

#include <alsa/asoundlib.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <thread>
#include <vector>

#include "softsynth/parameters/constants.h"
#include "standalone/audio_output.h"
#include "standalone/device_player.h"

namespace tarquil {

namespace {

constexpr snd_pcm_uframes_t BLOCK = 256;
constexpr unsigned LATENCY_US = 25000;
constexpr float FULL_SCALE = 32767.0F;

// The sequencer's messages as bytes; without a sequencer there are none.
class AlsaMidi {
  public:
    AlsaMidi() {
        if (snd_seq_open(&sequencer, "default", SND_SEQ_OPEN_INPUT, SND_SEQ_NONBLOCK) < 0) {
            sequencer = nullptr;
            return;
        }
        snd_seq_set_client_name(sequencer, "Tarquil");
        snd_seq_create_simple_port(sequencer, "midi",
                                   SND_SEQ_PORT_CAP_WRITE | SND_SEQ_PORT_CAP_SUBS_WRITE,
                                   SND_SEQ_PORT_TYPE_MIDI_GENERIC | SND_SEQ_PORT_TYPE_SYNTH);
        snd_midi_event_new(MAX_MESSAGE, &decoder);
        snd_midi_event_no_status(decoder, 1);
    }
    AlsaMidi(const AlsaMidi&) = delete;
    AlsaMidi& operator=(const AlsaMidi&) = delete;
    ~AlsaMidi() {
        if (decoder != nullptr)
            snd_midi_event_free(decoder);
        if (sequencer != nullptr)
            snd_seq_close(sequencer);
    }

    void play_all(DevicePlayer& player) {
        snd_seq_event_t* event = nullptr;
        while (sequencer != nullptr && snd_seq_event_input(sequencer, &event) >= 0) {
            uint8_t bytes[MAX_MESSAGE];
            const long size = snd_midi_event_decode(decoder, bytes, sizeof(bytes), event);
            if (size > 0)
                player.play(bytes, uint32_t(size), 0);
        }
    }

  private:
    static constexpr size_t MAX_MESSAGE = 16;

    snd_seq_t* sequencer = nullptr;
    snd_midi_event_t* decoder = nullptr;
};

class AlsaOutput : public AudioOutput {
  public:
    AlsaOutput(Player& played, snd_pcm_t* opened)
        : player(played), pcm(opened), left(BLOCK), right(BLOCK), frames(2 * BLOCK),
          thread([this] { run(); }) {}
    AlsaOutput(const AlsaOutput&) = delete;
    AlsaOutput& operator=(const AlsaOutput&) = delete;
    ~AlsaOutput() override {
        is_stopping = true;
        thread.join();
        snd_pcm_close(pcm);
    }

    [[nodiscard]] std::string name() const override {
        return "ALSA, " + std::to_string(BLOCK) + " frames";
    }

  private:
    void run() {
        while (!is_stopping) {
            midi.play_all(player);
            player.render(left.data(), right.data(), uint32_t(BLOCK));
            for (size_t i = 0; i < BLOCK; i++) {
                frames[2 * i] = int16_t(std::lrint(left[i] * FULL_SCALE));
                frames[2 * i + 1] = int16_t(std::lrint(right[i] * FULL_SCALE));
            }
            const snd_pcm_sframes_t written = snd_pcm_writei(pcm, frames.data(), BLOCK);
            if (written < 0 && snd_pcm_recover(pcm, int(written), 1) < 0)
                return; // the device is gone
        }
    }

    DevicePlayer player;
    AlsaMidi midi;
    snd_pcm_t* pcm;
    std::vector<float> left;
    std::vector<float> right;
    std::vector<int16_t> frames;
    std::atomic<bool> is_stopping{false};
    std::thread thread; // the last: it uses the others
};

// The library's own messages say less than the reason that is given.
void keep_quiet(const char* /*file*/, int /*line*/, const char* /*function*/, int /*error*/,
                const char* /*format*/, ...) {}

} // namespace

std::unique_ptr<AudioOutput> make_alsa_output(Player& played, std::string& reason) {
    snd_lib_error_set_handler(keep_quiet);
    snd_pcm_t* pcm = nullptr;
    int error = snd_pcm_open(&pcm, "default", SND_PCM_STREAM_PLAYBACK, 0);
    if (error >= 0) {
        constexpr int CONVERT_RATE = 1;
        error = snd_pcm_set_params(pcm, SND_PCM_FORMAT_S16, SND_PCM_ACCESS_RW_INTERLEAVED, 2,
                                   unsigned(SAMPLE_RATE), CONVERT_RATE, LATENCY_US);
    }
    if (error < 0) {
        reason = std::string("no ALSA device: ") + snd_strerror(error);
        if (pcm != nullptr)
            snd_pcm_close(pcm);
        return nullptr;
    }
    return std::make_unique<AlsaOutput>(played, pcm);
}

} // namespace tarquil
