// One sound file for each channel of a song.
//
// A stem is what its channel adds to the main bus: with the channel's own effects, filters, volume
// and pan, without the returns of the reverb and the delay and without the master section.  The
// stems of all used channels add up to the main bus before that; exactly so in 32-bit floats at the
// engine's rate, where nothing is rounded, clipped or converted.

#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "tools/audio/audio_writer.h"
#include "tools/audio/rate_converter.h"
#include "tools/render/engine_driver.h"

namespace tarquil {

class StemOutputs {
  public:
    // Files "channel-01.wav" to "channel-16.wav" (or the format's ending) in `folder`, which is
    // made when it does not exist.  `max_frames` at SAMPLE_RATE.  The engine keeps its channels.
    StemOutputs(const EngineDriver& engine, std::string folder_path, const AudioFormat& format,
                const ChannelSet& channels, uint64_t max_frames);
    ~StemOutputs();
    StemOutputs(const StemOutputs&) = delete;
    StemOutputs& operator=(const StemOutputs&) = delete;

    // The first `num_frames` of the engine's last block.
    void write(uint64_t num_frames);
    void finish();
    void commit();

  private:
    struct Stem {
        Stem(unsigned stem_channel, const std::string& path, const AudioFormat& format,
             uint64_t max_frames);

        unsigned channel;
        AudioWriter writer;
        RateConverter converter;
        FrameChunks chunks;
    };

    const EngineDriver& driver;
    std::string folder;
    bool remove_folder = false; // made here, and not complete yet
    std::vector<std::unique_ptr<Stem>> stems;
};

} // namespace tarquil
