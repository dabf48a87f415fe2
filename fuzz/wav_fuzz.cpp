// WAV data: samples are finite and within full scale, a file reads as the same bytes in memory,
// and what was read resamples.

#include <cstdint>
#include <cstdlib>

#include "common/assertion.h"
#include "common/load_string.h"
#include "common/platform/file_system.h"
#include "common/resample.h"
#include "common/wav.h"

namespace tarquil {

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

// One file for the whole run, removed at its end.
struct WavFile {
    WavFile() : folder(mktempdir()), path(concat_paths(folder, "x.wav")) {}
    WavFile(const WavFile&) = delete;
    WavFile& operator=(const WavFile&) = delete;
    ~WavFile() { recursive_remove(folder); }

    std::string folder;
    std::string path;
};

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const WavFile file;
    std::vector<float> samples;
    float rate = 0.0F;
    const int error = wav_decode(data, size, samples, rate);
    TARQ_ASSERT(error == 0 || (error >= 2 && error <= 6));
    TARQ_ASSERT(samples.size() <= size / 2);
    for (const float sample : samples)
        TARQ_ASSERT(sample >= -1.0F && sample < 1.0F);

    TARQ_ASSERT(save_file_to_string(file.path, {reinterpret_cast<const char*>(data), size}) == 0);
    std::vector<float> read_samples;
    float read_rate = 0.0F;
    const int read_error = wav_read(file.path, read_samples, read_rate);
    TARQ_ASSERT(read_rate == rate);
    TARQ_ASSERT(read_error == error || (error == 0 && read_error == 6));
    TARQ_ASSERT(read_error != 0 || read_samples == samples);

    const size_t length = samples.size();
    if (resample(samples, rate, 44100.0F))
        TARQ_ASSERT(samples.size() <= length);
    return 0;
}

} // namespace tarquil
