// A player that plays a song.
//
// Every channel c starts with instrument c of the bank, unless it is given an instrument of its
// own.

#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "instrument/instrument.h"
#include "instrument/settings.h"
#include "player/player.h"
#include "player/quantum_stream.h"
#include "player/worker_threads.h"
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

// Renders within -1..1, in runs of a quantum.
class EngineDriver : public SongDriver {
  public:
    // Song and orchestra stay where they are as long as the driver.  `set`: what General MIDI plays
    // beside the bank; null: the song is in the native dialect.  On several threads the engines of
    // General MIDI each do many runs at a time.
    EngineDriver(const Song& played_song, const Orchestra& players,
                 const std::shared_ptr<const GmSet>& set, uint32_t seed, unsigned threads = 1);

    [[nodiscard]] uint32_t block() const override {
        return is_deferring ? DEFERRED_FRAMES : QuantumStream::QUANTUM;
    }

    void render(float* pcm, const Beside& beside) override;

    // Keeps each channel's own sound from here on, whose blocks are then a run each.
    void keep_channels();

    // What a channel added to the main bus in the last block, after keep_channels.
    [[nodiscard]] const StereoBuffer& channel_sound(unsigned channel) const {
        return taps[channel];
    }

    // With a set.
    [[nodiscard]] const GmEnsemble& general_midi() { return *player.audio().ensemble(); }

  protected:
    void queue_message(uint32_t time, uint32_t block_start, const uint8_t* bytes) override;
    void queue_exclusive(const SongExclusive& message, uint32_t block_start) override;
    void queue_tempo(const HostTempo& said, uint32_t time, uint32_t block_start) override;
    void queue_releases(uint32_t end_time, uint32_t block_start) override;
    void run(float* pcm, uint32_t frames, uint32_t block_start) override;

  private:
    // Performs a block while what the last calls have performed goes on and is finished.
    void render_ahead(const Beside& beside);

    // Some milliseconds of work: little is lost by waiting for the last thread.
    static constexpr uint32_t DEFERRED_FRAMES = MAX_NUM_SAMPLES;
    static_assert(DEFERRED_FRAMES % QuantumStream::QUANTUM == 0);

    // The player's clock may have been moved back.
    uint32_t player_time(uint32_t time, uint32_t block_start) {
        return player.audio().time() + (time - block_start);
    }

    const Orchestra& orchestra;
    WorkerThreads workers; // of the player
    Player player;
    bool is_deferring;
    DeferredRuns later[3]; // to be finished, to go on, to be performed
    std::vector<StereoBuffer> taps;
};

} // namespace tarquil
