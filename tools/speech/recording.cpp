// Recordings read as the speech encoder takes them.

#include "tools/speech/recording.h"

#include <samplerate.h>
#include <sndfile.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <memory>

#include "common/failure.h"
#include "softsynth/lpc/speech.h"
#include "softsynth/parameters/constants.h"

namespace tarquil {

namespace {

constexpr sf_count_t CHUNK_FRAMES = 4096;
constexpr double MAX_SECONDS =
    double(MAX_SPEECH_FRAMES) * SPEECH_FRAME_SAMPLES / double(SAMPLE_RATE);

struct SndfileCloser {
    void operator()(SNDFILE* file) const { sf_close(file); }
};
using SndfileHandle = std::unique_ptr<SNDFILE, SndfileCloser>;

SndfileHandle open_recording(const std::string& path, SF_INFO& info) {
    SNDFILE* file = path == "-" ? sf_open_fd(STDIN_FILENO, SFM_READ, &info, SF_FALSE)
                                : sf_open(path.c_str(), SFM_READ, &info);
    if (file == nullptr)
        throw BadInput(path + ": " + sf_strerror(nullptr));
    return SndfileHandle(file);
}

std::vector<float> read_mono(const std::string& path, SNDFILE* file, const SF_INFO& info) {
    std::vector<float> samples;
    const auto channels = size_t(info.channels);
    std::vector<float> frames(size_t(CHUNK_FRAMES) * channels);
    sf_count_t count = 0;
    while ((count = sf_readf_float(file, frames.data(), CHUNK_FRAMES)) > 0) {
        for (size_t i = 0; i < size_t(count); i++) {
            float sum = 0.0F;
            for (size_t channel = 0; channel < channels; channel++)
                sum += frames[i * channels + channel];
            const float sample = sum / float(channels);
            samples.push_back(std::isfinite(sample) ? sample : 0.0F);
        }
        if (double(samples.size()) > MAX_SECONDS * info.samplerate)
            throw BadInput(path + ": longer than ten minutes");
    }
    return samples;
}

std::vector<float> convert_rate(const std::string& path, const std::vector<float>& samples,
                                int rate) {
    const double ratio = double(SAMPLE_RATE) / rate;
    if (src_is_valid_ratio(ratio) == 0)
        throw BadInput(path + ": a sample rate of " + std::to_string(rate) +
                       " Hz can not be converted to 44100 Hz");
    std::vector<float> converted(size_t(std::ceil(double(samples.size()) * ratio)));
    SRC_DATA data{};
    data.data_in = samples.data();
    data.input_frames = long(samples.size());
    data.data_out = converted.data();
    data.output_frames = long(converted.size());
    data.src_ratio = ratio;
    const int error = src_simple(&data, SRC_SINC_BEST_QUALITY, 1);
    if (error != 0)
        throw Failure(STATUS_CANNOT, path + ": " + src_strerror(error));
    converted.resize(size_t(data.output_frames_gen));
    return converted;
}

} // namespace

std::vector<float> read_recording(const std::string& path) {
    SF_INFO info{};
    const SndfileHandle file = open_recording(path, info);
    std::vector<float> samples = read_mono(path, file.get(), info);
    if (samples.empty())
        throw BadInput(path + ": holds no sound");
    if (info.samplerate == SAMPLE_RATE)
        return samples;
    return convert_rate(path, samples, info.samplerate);
}

} // namespace tarquil
