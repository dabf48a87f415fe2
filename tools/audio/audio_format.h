// What kind of sound file is written.

#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tarquil {

enum class Container { WAV, FLAC, AIFF, OGG_VORBIS, OGG_OPUS };

// LOSSY: the encoder has no bits to choose.
enum class SampleType { INT_16, INT_24, INT_32, FLOAT_32, LOSSY };

struct AudioFormat {
    Container container = Container::WAV;
    SampleType samples = SampleType::INT_24;
    int rate = 44100; // Hz
    int channels = 2;
};

// What the user asked for; empty where nothing was said.
struct AudioRequest {
    std::string path = {};   // its ending tells the container; "-" and devices get a WAV file
    std::string format = {}; // "wav", "flac", "aiff", "ogg" (Vorbis) or "opus", before the ending
    std::string bits = {};   // "16", "24", "32" or "float"
    std::optional<int> rate = {}; // Hz
};

// 24 bits at the engine's rate where nothing else is asked for; 48000 Hz for Opus, which does not
// know the engine's rate.  BadInput for what a container cannot hold.
AudioFormat choose_audio_format(const AudioRequest& request);

// "wav" and "24", for people and scripts; "lossy" where there are no bits.
const char* container_name(const AudioFormat& format);
const char* sample_type_name(const AudioFormat& format);

// The ending of the container's files, with its dot.
const char* file_ending(const AudioFormat& format);

// The format word of libsndfile for a stereo file of at most `max_frames` frames.  BadInput when
// that is more than the container can hold; a WAV file above 4 GiB becomes RF64.
int sndfile_format(const AudioFormat& format, uint64_t max_frames);

} // namespace tarquil
