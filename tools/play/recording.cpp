// What a device plays, kept in a sound file.

#include "tools/play/recording.h"

#include <algorithm>

namespace tarquil {

namespace {

// The most that a plain WAV file holds, at eight bytes a frame: three hours at 48000 Hz.
constexpr uint64_t MAX_FRAMES = (uint64_t(1) << 29U) - 4096;

AudioFormat format_of(const std::string& path, std::optional<uint32_t> rate) {
    AudioRequest request;
    request.path = path;
    if (rate)
        request.rate = int(*rate);
    return choose_audio_format(request);
}

} // namespace

Recording::Recording(const std::string& path, std::optional<uint32_t> rate)
    : format(format_of(path, rate)), writer({.path = path}, format, MAX_FRAMES), room(MAX_FRAMES) {}

Listener Recording::listener() {
    return [this](const float* left, const float* right, uint32_t frames) {
        try {
            if (failure == nullptr)
                write(left, right, frames);
        } catch (...) {
            failure = std::current_exception();
        }
    };
}

void Recording::write(const float* left, const float* right, uint32_t frames) {
    const auto count = uint32_t(std::min<uint64_t>(frames, room));
    is_whole = is_whole && count == frames;
    room -= count;
    interleaved.resize(size_t(2) * count);
    for (size_t i = 0; i < count; i++) {
        interleaved[2 * i] = left[i];
        interleaved[2 * i + 1] = right[i];
    }
    writer.write(interleaved.data(), count);
}

bool Recording::finish() {
    if (failure != nullptr)
        std::rethrow_exception(failure);
    writer.finish();
    writer.commit();
    return is_whole;
}

} // namespace tarquil
