// The song's sound file: at its rate, brought to its level, and measured.

#include "tools/render/main_output.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>

#include "common/failure.h"
#include "softsynth/parameters/constants.h"

namespace tarquil {

namespace {

constexpr size_t FRAME_BYTES = 2 * sizeof(float);

[[noreturn]] void fail_spool() {
    throw Failure(STATUS_CANNOT, std::string("temporary file: ") + strerror(errno));
}

} // namespace

uint64_t converted_frames(uint64_t num_frames, int rate) {
    return num_frames * uint64_t(rate) / SAMPLE_RATE + 1;
}

MainOutput::MainOutput(const OutputPlace& place, const AudioFormat& format, uint64_t max_frames,
                       std::optional<double> peak_dbfs, bool is_measured)
    : writer(place, format, converted_frames(max_frames, format.rate)),
      converter(format.rate,
                [this](const float* frames, uint64_t num_frames) {
                    if (spool >= 0)
                        write_spool(frames, num_frames);
                    else
                        write_file(frames, num_frames);
                }),
      chunks([this](const float* frames, uint64_t num_frames) {
          converter.write(frames, num_frames);
      }),
      target_dbfs(peak_dbfs) {
    if (is_measured)
        meter.emplace(format.rate);
    if (target_dbfs)
        spool = open_spool_file();
}

MainOutput::~MainOutput() {
    if (spool >= 0)
        close(spool);
}

void MainOutput::finish() {
    chunks.finish();
    converter.finish();
    if (spool >= 0)
        read_spool();
    writer.finish();
}

void MainOutput::write_file(const float* frames, uint64_t num_frames) {
    writer.write(frames, num_frames);
    if (meter)
        meter->add(frames, num_frames);
    num_frames_written += num_frames;
}

void MainOutput::write_spool(const float* frames, uint64_t num_frames) {
    spool_peak = std::max(spool_peak, find_peak(frames, 2 * num_frames));
    const char* bytes = reinterpret_cast<const char*>(frames);
    for (size_t rest = num_frames * FRAME_BYTES; rest > 0;) {
        const ssize_t written = ::write(spool, bytes, rest);
        if (written < 0 && errno != EINTR)
            fail_spool();
        if (written > 0) {
            bytes += written;
            rest -= size_t(written);
        }
    }
}

void MainOutput::read_spool() {
    const float target = float(std::pow(10.0, *target_dbfs / 20.0));
    const float gain = spool_peak > 0.0F ? target / spool_peak : 1.0F;
    std::vector<float> samples(2 * FrameChunks::CHUNK_FRAMES);
    off_t position = 0;
    for (;;) {
        const ssize_t count =
            pread(spool, samples.data(), FrameChunks::CHUNK_FRAMES * FRAME_BYTES, position);
        if (count < 0)
            fail_spool();
        if (count == 0)
            return;
        const size_t num_frames = size_t(count) / FRAME_BYTES;
        for (size_t i = 0; i < 2 * num_frames; i++)
            samples[i] *= gain;
        write_file(samples.data(), num_frames);
        position += count;
    }
}

} // namespace tarquil
