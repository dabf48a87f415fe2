// What a device plays, kept in a sound file that appears when the playing has ended.

#pragma once

#include <cstdint>
#include <exception>
#include <vector>

#include "standalone/devices.h"
#include "tools/audio/audio_writer.h"

namespace tarquil {

class Recording {
  public:
    // The file's format follows from its name, its rate is `rate` if given.  BadInput for a place
    // or a rate that cannot be.
    Recording(const std::string& path, std::optional<uint32_t> rate);
    Recording(const Recording&) = delete;
    Recording& operator=(const Recording&) = delete;

    [[nodiscard]] uint32_t get_rate() const { return uint32_t(format.rate); }

    // For the device's thread; refers to this object.
    Listener listener();

    // After the device has ended: the file appears.  What went wrong meanwhile is thrown.
    // False when the sound went on beyond what the file can hold.
    bool finish();

  private:
    void write(const float* left, const float* right, uint32_t frames);

    const AudioFormat format;
    AudioWriter writer;
    std::vector<float> interleaved;
    uint64_t room; // frames
    bool is_whole = true;
    std::exception_ptr failure;
};

} // namespace tarquil
