// Sound files read back.

#pragma once

#include <sndfile.h>

#include <string>
#include <vector>

namespace tarquil {

struct Sound {
    SF_INFO info{};
    std::vector<float> samples; // interleaved

    [[nodiscard]] bool is_open() const { return info.channels != 0; }
};

inline Sound read_sound(const std::string& path) {
    Sound sound;
    SNDFILE* file = sf_open(path.c_str(), SFM_READ, &sound.info);
    if (file == nullptr)
        return {};
    sound.samples.resize(size_t(sound.info.frames) * size_t(sound.info.channels));
    sound.info.frames = sf_readf_float(file, sound.samples.data(), sound.info.frames);
    sf_close(file);
    return sound;
}

} // namespace tarquil
