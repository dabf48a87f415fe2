// Speech spoken into a sound file.

#include "tools/speech/speech_decode.h"

#include <algorithm>
#include <array>
#include <vector>

#include "common/failure.h"
#include "softsynth/parameters/constants.h"
#include "tools/audio/audio_writer.h"
#include "tools/speech/recording.h"

namespace tarquil {

namespace {

constexpr size_t BLOCK = 4096;
using Block = std::array<float, BLOCK>;

// A recording over and over.
class Loop {
  public:
    explicit Loop(std::vector<float> looped) : samples(std::move(looped)) {}

    void read(Block& block) {
        for (float& sample : block) {
            sample = samples[position];
            position = (position + 1) % samples.size();
        }
    }

  private:
    std::vector<float> samples;
    size_t position = 0;
};

AudioFormat choose_format(const AudioRequest& request) {
    AudioFormat format = choose_audio_format(request);
    format.channels = 1;
    if (format.rate != SAMPLE_RATE)
        throw BadInput(request.path + ": speech has 44100 Hz, which this format can not hold");
    return format;
}

} // namespace

void decode_speech(const Speech& speech, const SpeechDecoding& decoding) {
    const bool has_carrier = decoding.settings.voice == SpeechVoice::CARRIER;
    const AudioFormat format = choose_format(decoding.audio);
    Loop carrier(has_carrier ? read_recording(decoding.carrier_path) : std::vector<float>(1));
    uint64_t left = speech_length(speech, decoding.settings.speed);
    AudioWriter writer({decoding.audio.path, decoding.standard_output}, format, left);
    SpeechPlayer player(speech, decoding.settings);
    Block carried{};
    Block spoken{};
    while (left > 0) {
        const auto count = uint32_t(std::min(left, uint64_t(BLOCK)));
        carrier.read(carried);
        player.render(carried.data(), spoken.data(), count);
        writer.write(spoken.data(), count);
        left -= count;
    }
    writer.finish();
    writer.commit();
}

} // namespace tarquil
