// A General MIDI ensemble that plays a song.

#pragma once

#include <cstdint>
#include <memory>

#include "player/gm_ensemble.h"
#include "tools/render/gm_set.h"
#include "tools/render/song_driver.h"

namespace tarquil {

// Without the limiter's delay.
class GmDriver : public SongDriver {
  public:
    // All stay where they are as long as the driver.
    GmDriver(const Song& played_song, const ChannelSet& sounding_channels,
             const TarqSettings& melodic, const GmSet& set, uint32_t seed);

    [[nodiscard]] uint32_t block() const override { return GmEnsemble::QUANTUM; }
    void render(float* pcm) override;

    [[nodiscard]] const GmEnsemble& get_ensemble() const { return *ensemble; }

  protected:
    void queue_message(uint32_t time, uint32_t block_start, const uint8_t* bytes) override;
    void queue_exclusive(const SongExclusive& message) override;
    void queue_releases(uint32_t end_time, uint32_t block_start) override;
    void run(float* pcm, uint32_t block_start) override;

  private:
    static_assert(GmEnsemble::LATENCY == GmEnsemble::QUANTUM);

    std::unique_ptr<GmEnsemble> ensemble; // large
    bool has_begun = false;
};

} // namespace tarquil
