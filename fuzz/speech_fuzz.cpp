// Speech files and recordings: what loads is written back as a file that loads as the same, and
// what is spoken or encoded from any bytes is finite and bounded.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "common/assertion.h"
#include "softsynth/lpc/speech_encoder.h"
#include "softsynth/lpc/speech_file.h"
#include "softsynth/lpc/speech_player.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

using namespace tarquil;

// Far above what full level gives: see the test of any frames.
constexpr float BOUND = 4000.0F;

constexpr size_t MAX_SPOKEN_FRAMES = 20;
constexpr size_t MAX_ENCODED_SAMPLES = 4000;

void speak(Speech speech, const SpeechSettings& settings) {
    speech.frames.resize(std::min(speech.frames.size(), MAX_SPOKEN_FRAMES));
    SpeechPlayer player(speech, settings);
    float carrier[256] = {};
    std::fill_n(carrier, 100, 0.5F);
    float samples[256] = {};
    while (!player.is_finished()) {
        player.render(carrier, samples, 256);
        for (const float sample : samples)
            TARQ_ASSERT(std::fabs(sample) < BOUND);
    }
}

void load(std::string_view bytes) {
    Speech speech;
    if (read_speech(bytes, speech) != SpeechFileError::NONE)
        return;
    Speech again;
    TARQ_ASSERT(read_speech(write_speech(speech), again) == SpeechFileError::NONE);
    // Bytes that no encoder writes may come back in another order, but not twice.
    TARQ_ASSERT(write_speech(again) == write_speech(speech));
    TARQ_ASSERT(again == speech);
    for (const SpeechVoice voice : {SpeechVoice::OWN, SpeechVoice::CARRIER, SpeechVoice::WHISPER})
        speak(speech, {voice, 100.0, bytes.size() % 2 == 0 ? 1.0 : -2.5});
}

// Any floats: not numbers and infinities too.
void encode(const uint8_t* data, size_t size) {
    std::vector<float> samples(std::min(size / sizeof(float), MAX_ENCODED_SAMPLES));
    if (!samples.empty())
        std::memcpy(samples.data(), data, samples.size() * sizeof(float));
    const Speech speech = encode_speech(samples);
    TARQ_ASSERT(speech.frames.size() ==
                (samples.size() + SPEECH_FRAME_SAMPLES - 1) / SPEECH_FRAME_SAMPLES);
    speak(speech, {});
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    load({reinterpret_cast<const char*>(data), size});
    encode(data, size);
    return 0;
}
