// Writing of one sound file.

#pragma once

#include <sndfile.h>

#include <cstdint>
#include <memory>

#include "tools/audio/audio_format.h"
#include "tools/audio/output_file.h"

namespace tarquil {

class AudioWriter {
  public:
    // Opens a file.  `max_frames` is the most that will be written.  BadInput when the
    // place cannot be written to or the format cannot hold the sound.
    AudioWriter(const OutputPlace& place, const AudioFormat& format, uint64_t max_frames);
    AudioWriter(const AudioWriter&) = delete;
    AudioWriter& operator=(const AudioWriter&) = delete;

    // Appends interleaved frames at the file's rate; integer formats clip beyond -1..1.
    void write(const float* frames, uint64_t num_frames);

    // Completes the contents; nothing is written after it.
    void finish();

    // Makes the finished file appear; without it none does.
    void commit() { output.commit(); }

  private:
    // What libsndfile's callbacks work on.
    struct Stream {
        int descriptor = -1;
        int error = 0; // errno of the first write that failed
    };
    struct SndfileCloser {
        void operator()(SNDFILE* file) const { sf_close(file); }
    };

    static SF_VIRTUAL_IO callbacks();
    void check() const;

    OutputFile output;
    Stream stream;
    std::unique_ptr<SNDFILE, SndfileCloser> sndfile;
    bool is_ogg;
};

} // namespace tarquil
