// Sound through an ALSA device at its own rate and format, notes from an ALSA sequencer port.

#include <alsa/asoundlib.h>
#include <pthread.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <bit>
#include <cerrno>
#include <cstdlib>
#include <thread>
#include <utility>
#include <vector>

#include "standalone/alsa_midi.h"
#include "standalone/device_player.h"
#include "standalone/devices.h"
#include "standalone/sample_format.h"

namespace tarquil {

namespace {

constexpr unsigned USUAL_RATE = 48000;
constexpr snd_pcm_uframes_t ALSA_PERIOD = 256;
constexpr unsigned NUM_PERIODS = 4; // of the device's buffer

// What the device and the program agree on.
struct AlsaSettings {
    SampleFormat format = SampleFormat::FLOAT;
    unsigned channels = 2;
    unsigned rate = USUAL_RATE;
    snd_pcm_uframes_t period = ALSA_PERIOD;
};

// The best first.
constexpr std::array<std::pair<snd_pcm_format_t, SampleFormat>, 5> FORMATS{
    {{SND_PCM_FORMAT_FLOAT, SampleFormat::FLOAT},
     {SND_PCM_FORMAT_S32, SampleFormat::INT32},
     {SND_PCM_FORMAT_S24, SampleFormat::INT24},
     {std::endian::native == std::endian::big ? SND_PCM_FORMAT_S24_3BE : SND_PCM_FORMAT_S24_3LE,
      SampleFormat::INT24_PACKED},
     {SND_PCM_FORMAT_S16, SampleFormat::INT16}}};

const char* format_name(SampleFormat format) {
    switch (format) {
    case SampleFormat::FLOAT:
        return "float";
    case SampleFormat::INT32:
        return "32 bits";
    case SampleFormat::INT16:
        return "16 bits";
    default:
        return "24 bits";
    }
}

int set_format(snd_pcm_t* pcm, snd_pcm_hw_params_t* hardware, AlsaSettings& settings) {
    for (const auto& [alsa_format, format] : FORMATS) {
        settings.format = format;
        if (snd_pcm_hw_params_set_format(pcm, hardware, alsa_format) >= 0)
            return 0;
    }
    return -EINVAL;
}

// 0, or ALSA's error.
int set_hardware(snd_pcm_t* pcm, const DeviceChoice& choice, AlsaSettings& settings) {
    snd_pcm_hw_params_t* hardware = nullptr;
    int error = snd_pcm_hw_params_malloc(&hardware);
    const auto then = [&](auto set, auto... arguments) {
        if (error >= 0)
            error = set(pcm, hardware, arguments...);
    };
    settings.rate = choice.rate.value_or(USUAL_RATE);
    settings.period = choice.period.value_or(uint32_t(ALSA_PERIOD));
    unsigned periods = NUM_PERIODS;
    then([](auto* device, auto* all) { return snd_pcm_hw_params_any(device, all); });
    then(snd_pcm_hw_params_set_rate_resample, 0U);
    then(snd_pcm_hw_params_set_access, SND_PCM_ACCESS_RW_INTERLEAVED);
    if (error >= 0)
        error = set_format(pcm, hardware, settings);
    then(snd_pcm_hw_params_set_channels_near, &settings.channels);
    then(snd_pcm_hw_params_set_rate_near, &settings.rate, nullptr);
    then(snd_pcm_hw_params_set_period_size_near, &settings.period, nullptr);
    then(snd_pcm_hw_params_set_periods_near, &periods, nullptr);
    if (error >= 0)
        error = snd_pcm_hw_params(pcm, hardware);
    snd_pcm_hw_params_free(hardware);
    return error;
}

// Before ordinary threads, where the user may have that.
void take_realtime_priority() {
    constexpr int PRIORITY = 70; // as JACK servers have
    sched_param parameters{};
    parameters.sched_priority = PRIORITY;
    pthread_setschedparam(pthread_self(), SCHED_FIFO, &parameters);
}

class AlsaDevice : public AudioDevice {
  public:
    AlsaDevice(DevicePlayer& played, snd_pcm_t* opened, const AlsaSettings& agreed)
        : player(played), pcm(opened), settings(agreed), left(agreed.period), right(agreed.period),
          bytes(agreed.period * agreed.channels * sample_bytes(agreed.format)),
          thread([this] { run(); }) {}
    AlsaDevice(const AlsaDevice&) = delete;
    AlsaDevice& operator=(const AlsaDevice&) = delete;
    ~AlsaDevice() override {
        is_stopping = true;
        thread.join();
        snd_pcm_close(pcm);
    }

    [[nodiscard]] std::string name() const override {
        return "ALSA, " + std::to_string(settings.period) + " frames at " +
               std::to_string(settings.rate) + " Hz, " + format_name(settings.format);
    }
    [[nodiscard]] bool is_lost() const override { return lost; }
    [[nodiscard]] uint32_t num_dropouts() const override { return dropouts; }

  private:
    void run() {
        take_realtime_priority();
        const auto frames = uint32_t(settings.period);
        midi.start(settings.rate, frames);
        while (!is_stopping && !lost) {
            player.begin_block(left.data(), right.data(), frames);
            midi.play_block(player, frames);
            player.end_block();
            write_frames(settings.format, settings.channels, left.data(), right.data(), frames,
                         bytes.data());
            lost = !write_block(frames);
        }
    }

    // False when the device is gone.
    bool write_block(uint32_t frames) {
        const size_t frame_bytes = settings.channels * sample_bytes(settings.format);
        for (uint32_t done = 0; done < frames;) {
            const snd_pcm_sframes_t written =
                snd_pcm_writei(pcm, bytes.data() + done * frame_bytes, frames - done);
            if (written >= 0) {
                done += uint32_t(written);
                continue;
            }
            dropouts += written == -EPIPE ? 1 : 0;
            constexpr int SILENTLY = 1;
            if (snd_pcm_recover(pcm, int(written), SILENTLY) < 0)
                return false;
        }
        return true;
    }

    DevicePlayer& player;
    AlsaMidi midi;
    snd_pcm_t* pcm;
    const AlsaSettings settings;
    std::vector<float> left;
    std::vector<float> right;
    std::vector<uint8_t> bytes;
    std::atomic<bool> is_stopping{false};
    std::atomic<bool> lost{false};
    std::atomic<uint32_t> dropouts{0};
    std::thread thread; // the last: it uses the others
};

// The library's own messages say less than the reason that is given.
void keep_quiet(const char* /*file*/, int /*line*/, const char* /*function*/, int /*error*/,
                const char* /*format*/, ...) {}

} // namespace

std::unique_ptr<AudioDevice> open_alsa_device(DevicePlayer& player, const DeviceChoice& choice,
                                              std::string& reason) {
    snd_lib_error_set_handler(keep_quiet);
    snd_pcm_t* pcm = nullptr;
    AlsaSettings settings;
    int error = snd_pcm_open(&pcm, choice.alsa_name.c_str(), SND_PCM_STREAM_PLAYBACK, 0);
    if (error >= 0)
        error = set_hardware(pcm, choice, settings);
    if (error < 0)
        reason = "no ALSA device " + choice.alsa_name + ": " + snd_strerror(error);
    else if (choice.rate && settings.rate != *choice.rate)
        reason = "the ALSA device " + choice.alsa_name + " has " + std::to_string(settings.rate) +
                 " Hz, not " + std::to_string(*choice.rate);
    else if (!player.activate(settings.rate))
        reason = "nothing plays at " + std::to_string(settings.rate) + " Hz";
    else
        return std::make_unique<AlsaDevice>(player, pcm, settings);
    if (pcm != nullptr)
        snd_pcm_close(pcm);
    return nullptr;
}

std::vector<DeviceName> list_alsa_devices() {
    snd_lib_error_set_handler(keep_quiet);
    std::vector<DeviceName> devices{{"alsa", "the default ALSA device"}};
    void** hints = nullptr;
    if (snd_device_name_hint(-1, "pcm", &hints) < 0)
        return devices;
    const auto take_text = [](const void* hint, const char* id) {
        char* text = snd_device_name_get_hint(hint, id);
        std::string copy = text == nullptr ? "" : text;
        std::free(text);
        return copy;
    };
    for (void** hint = hints; *hint != nullptr; hint++) {
        const std::string direction = take_text(*hint, "IOID"); // none: both
        if (direction.empty() || direction == "Output") {
            std::string meaning = take_text(*hint, "DESC");
            std::replace(meaning.begin(), meaning.end(), '\n', ' ');
            devices.push_back({"alsa:" + take_text(*hint, "NAME"), meaning});
        }
    }
    snd_device_name_free_hint(hints);
    return devices;
}

} // namespace tarquil
