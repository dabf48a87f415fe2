// The song's sound file: at its rate, brought to its level, and measured.

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tools/audio/audio_writer.h"
#include "tools/audio/loudness_meter.h"
#include "tools/audio/rate_converter.h"

namespace tarquil {

class MainOutput {
  public:
    // `max_frames` at SAMPLE_RATE.  The peak becomes `peak_dbfs` when that is given, which needs
    // the whole sound: until then it lies in a temporary file.  Measured only on demand, which
    // takes some time.
    MainOutput(const OutputPlace& place, const AudioFormat& format, uint64_t max_frames,
               std::optional<double> peak_dbfs, bool is_measured);
    ~MainOutput();
    MainOutput(const MainOutput&) = delete;
    MainOutput& operator=(const MainOutput&) = delete;

    // Interleaved stereo frames at SAMPLE_RATE.
    void write(const float* frames, uint64_t num_frames) { chunks.write(frames, num_frames); }
    void finish();
    void commit() { writer.commit(); }

    // Of the file, after finish.
    [[nodiscard]] uint64_t get_num_frames() const { return num_frames_written; }
    // Null: not measured.
    [[nodiscard]] const LoudnessMeter* get_meter() const { return meter ? &*meter : nullptr; }

  private:
    void write_file(const float* frames, uint64_t num_frames);
    void write_spool(const float* frames, uint64_t num_frames);
    void read_spool();

    AudioWriter writer;
    std::optional<LoudnessMeter> meter;
    RateConverter converter;
    FrameChunks chunks;
    std::optional<double> target_dbfs;
    int spool = -1; // interleaved floats; -1: no level was asked for
    float spool_peak = 0.0F;
    uint64_t num_frames_written = 0;
};

// At most this many frames at `rate` come from `num_frames` at SAMPLE_RATE.
uint64_t converted_frames(uint64_t num_frames, int rate);

} // namespace tarquil
