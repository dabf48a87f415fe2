// The speech that instruments can name.

#include "softsynth/lpc/speech_slots.h"

#include <memory>
#include <string_view>
#include <utility>

#include "common/assertion.h"
#include "common/load_string.h"
#include "common/resample.h"
#include "common/wav.h"
#include "softsynth/lpc/speech_encoder.h"
#include "softsynth/lpc/speech_file.h"
#include "softsynth/parameters/constants.h"

namespace tarquil {

namespace {

constexpr std::string_view WAV_MAGIC = "RIFF";

std::string load_recording(std::string_view bytes, Speech& speech) {
    std::vector<float> samples;
    float rate = 0.0F;
    const int error =
        wav_decode(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size(), samples, rate);
    if (error != 0)
        return wav_get_error_string(error);
    if (!resample(samples, rate, float(SAMPLE_RATE)))
        return "the sample rate is neither 44100 Hz nor 2, 4, 8, ... times as much";
    if (samples.size() > MAX_SPEECH_FRAMES * SPEECH_FRAME_SAMPLES)
        return explain(SpeechFileError::TOO_LONG);
    speech = encode_speech(samples);
    return {};
}

std::string load_speech(std::string_view bytes, Speech& speech) {
    if (bytes.starts_with(WAV_MAGIC))
        return load_recording(bytes, speech);
    const SpeechFileError error = read_speech(bytes, speech);
    return error == SpeechFileError::NONE ? "" : explain(error);
}

} // namespace

SpeechSlots::~SpeechSlots() {
    for (std::atomic<const Speech*>& slot : slots)
        delete slot.load();
}

bool SpeechSlots::put(size_t slot, Speech speech) {
    TARQ_ASSERT(slot < NUM_SLOTS);
    auto owned = std::make_unique<const Speech>(std::move(speech));
    const Speech* empty = nullptr;
    if (!slots[slot].compare_exchange_strong(empty, owned.get(), std::memory_order_acq_rel))
        return false;
    static_cast<void>(owned.release());
    return true;
}

std::string SpeechSlots::load(size_t slot, const std::string& path) {
    if (get(slot) != nullptr)
        return "the slot holds speech already";
    std::string bytes;
    if (load_file_to_string(path, bytes) != 0)
        return "cannot be read";
    Speech speech;
    std::string reason = load_speech(bytes, speech);
    if (reason.empty() && !put(slot, std::move(speech)))
        reason = "the slot holds speech already";
    return reason;
}

const Speech* SpeechSlots::get(size_t slot) const {
    TARQ_ASSERT(slot < NUM_SLOTS);
    return slots[slot].load(std::memory_order_acquire);
}

} // namespace tarquil
