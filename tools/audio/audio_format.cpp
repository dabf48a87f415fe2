// What kind of sound file is written.

#include "tools/audio/audio_format.h"

#include <sndfile.h>

#include <algorithm>
#include <cctype>

#include "common/characters.h"
#include "common/failure.h"
#include "softsynth/parameters/constants.h"

namespace tarquil {

namespace {

constexpr int MIN_RATE = 8000;
constexpr int MAX_RATE = 192000;
constexpr int OPUS_RATES[] = {8000, 12000, 16000, 24000, 48000};
constexpr int OPUS_DEFAULT_RATE = 48000;

// What the 32-bit sizes of WAV and AIFF leave for the frames beside the header.
constexpr uint64_t MAX_CHUNK_BYTES = 0xFFFF0000;

struct ContainerInfo {
    Container container;
    const char* name;
    const char* ending;
    int sndfile_type;
};

constexpr ContainerInfo CONTAINERS[] = {
    {Container::WAV, "wav", ".wav", SF_FORMAT_WAV},
    {Container::FLAC, "flac", ".flac", SF_FORMAT_FLAC},
    {Container::AIFF, "aiff", ".aiff", SF_FORMAT_AIFF},
    {Container::OGG_VORBIS, "ogg", ".ogg", SF_FORMAT_OGG | SF_FORMAT_VORBIS},
    {Container::OGG_OPUS, "opus", ".opus", SF_FORMAT_OGG | SF_FORMAT_OPUS},
};

struct SampleTypeInfo {
    SampleType type;
    const char* name;
    int sndfile_subtype;
    unsigned num_bytes;
};

constexpr SampleTypeInfo SAMPLE_TYPES[] = {
    {SampleType::INT_16, "16", SF_FORMAT_PCM_16, 2},
    {SampleType::INT_24, "24", SF_FORMAT_PCM_24, 3},
    {SampleType::INT_32, "32", SF_FORMAT_PCM_32, 4},
    {SampleType::FLOAT_32, "float", SF_FORMAT_FLOAT, 4},
    {SampleType::LOSSY, "lossy", 0, 0},
};

const ContainerInfo& info_of(Container container) {
    return *std::find_if(std::begin(CONTAINERS), std::end(CONTAINERS),
                         [&](const ContainerInfo& info) { return info.container == container; });
}

const SampleTypeInfo& info_of(SampleType type) {
    return *std::find_if(std::begin(SAMPLE_TYPES), std::end(SAMPLE_TYPES),
                         [&](const SampleTypeInfo& info) { return info.type == type; });
}

Container find_container(const AudioRequest& request) {
    if (!request.format.empty()) {
        for (const ContainerInfo& info : CONTAINERS)
            if (request.format == info.name)
                return info.container;
        throw BadInput("--format " + request.format + ": not one of wav, flac, aiff, ogg, opus");
    }
    if (request.path == "-" || request.path.starts_with("/dev/"))
        return Container::WAV;
    const std::string path = lower_case(request.path);
    for (const ContainerInfo& info : CONTAINERS)
        if (path.ends_with(info.ending))
            return info.container;
    if (path.ends_with(".aif"))
        return Container::AIFF;
    throw BadInput(request.path + ": the name does not tell the format; say it with --format");
}

SampleType find_sample_type(const AudioRequest& request, Container container) {
    const bool is_lossy = container == Container::OGG_VORBIS || container == Container::OGG_OPUS;
    if (request.bits.empty())
        return is_lossy ? SampleType::LOSSY : SampleType::INT_24;
    if (is_lossy)
        throw BadInput("--bits " + request.bits + ": " + info_of(container).name +
                       " files have no bits to choose");
    for (const SampleTypeInfo& info : SAMPLE_TYPES) {
        if (info.type == SampleType::LOSSY || request.bits != info.name)
            continue;
        if (container == Container::FLAC && info.num_bytes == 4)
            throw BadInput("--bits " + request.bits + ": flac files have 16 or 24 bits");
        return info.type;
    }
    throw BadInput("--bits " + request.bits + ": not one of 16, 24, 32, float");
}

int find_rate(const AudioRequest& request, Container container) {
    const bool is_opus = container == Container::OGG_OPUS;
    if (!request.rate)
        return is_opus ? OPUS_DEFAULT_RATE : SAMPLE_RATE;
    const int rate = *request.rate;
    const std::string option = "--rate " + std::to_string(rate);
    if (rate < MIN_RATE || rate > MAX_RATE)
        throw BadInput(option + ": not within 8000 to 192000 Hz");
    if (is_opus && std::count(std::begin(OPUS_RATES), std::end(OPUS_RATES), rate) == 0)
        throw BadInput(option + ": opus files have 8000, 12000, 16000, 24000 or 48000 Hz");
    return rate;
}

} // namespace

AudioFormat choose_audio_format(const AudioRequest& request) {
    const Container container = find_container(request);
    return {.container = container,
            .samples = find_sample_type(request, container),
            .rate = find_rate(request, container)};
}

const char* container_name(const AudioFormat& format) {
    return info_of(format.container).name;
}

const char* sample_type_name(const AudioFormat& format) {
    return info_of(format.samples).name;
}

const char* file_ending(const AudioFormat& format) {
    return info_of(format.container).ending;
}

int sndfile_format(const AudioFormat& format, uint64_t max_frames) {
    const SampleTypeInfo& samples = info_of(format.samples);
    int type = info_of(format.container).sndfile_type;
    if (max_frames * 2 * samples.num_bytes > MAX_CHUNK_BYTES) {
        if (format.container == Container::AIFF)
            throw BadInput("the sound is too long for an aiff file");
        if (format.container == Container::WAV)
            type = SF_FORMAT_RF64;
    }
    return type | samples.sndfile_subtype;
}

} // namespace tarquil
