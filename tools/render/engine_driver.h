// An engine that plays a song.
//
// It does what a host does with the plug-in: every channel c starts with instrument c of the bank,
// raw messages go through the MIDI filter, a program change becomes the controllers of that
// instrument at its time.

#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "instrument/instrument.h"
#include "instrument/settings.h"
#include "softsynth/core/core.h"
#include "softsynth/signal/buffer.h"
#include "tools/render/song_driver.h"

namespace tarquil {

// What the sixteen channels play.
struct Orchestra {
    TarqSettings bank;
    // Played by the channel for the whole song, whatever its program changes say.
    std::array<std::optional<Instrument>, NUM_CHANNELS> fixed_instruments;
    ChannelSet channels; // notes of the others are left out; their controllers count
};

// The channels with a note that sounds.
ChannelSet find_used_channels(const Song& song, const ChannelSet& channels);

// Renders within -1..1.
class EngineDriver : public SongDriver {
  public:
    // Both stay where they are as long as the driver.
    EngineDriver(const Song& played_song, const Orchestra& players, uint32_t seed);

    // Keeps each channel's own sound from here on.
    void keep_channels();

    // What a channel added to the main bus in the last block, after keep_channels.
    [[nodiscard]] const StereoBuffer& channel_sound(unsigned channel) const {
        return taps[channel];
    }

  protected:
    size_t queue_message(uint32_t time, uint32_t block_start, const uint8_t* bytes) override;
    void run(float* pcm, uint32_t num_samples, uint32_t block_start) override;

  private:
    void queue_first_instruments();
    void queue_instrument(const Instrument& instrument, unsigned channel, uint32_t time);

    const Orchestra& orchestra;
    std::unique_ptr<Tarquil> synth;
    std::vector<StereoBuffer> taps;
    std::vector<midi_event> events; // of the current block
};

} // namespace tarquil
