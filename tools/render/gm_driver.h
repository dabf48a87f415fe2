// A General MIDI ensemble that plays a song.

#pragma once

#include <cstdint>
#include <memory>

#include "player/gm_ensemble.h"
#include "tools/render/gm_set.h"
#include "tools/render/song_driver.h"

namespace tarquil {

// Renders the same bytes whatever the lengths it is asked for, and without the limiter's delay.
class GmDriver : public SongDriver {
  public:
    // All stay where they are as long as the driver.
    GmDriver(const Song& played_song, const ChannelSet& sounding_channels,
             const TarqSettings& melodic, const GmSet& set, uint32_t seed);

    void render(float* pcm, uint32_t num_samples) override;

    [[nodiscard]] const GmEnsemble& get_ensemble() const { return *ensemble; }

  protected:
    size_t queue_message(uint32_t time, uint32_t block_start, const uint8_t* bytes) override;
    void queue_exclusive(const SongExclusive& message) override;
    void queue_releases(uint32_t end_time, uint32_t block_start) override;
    void run(float* pcm, uint32_t num_samples, uint32_t block_start) override;

  private:
    static constexpr uint32_t QUANTUM = GmEnsemble::QUANTUM;
    static_assert(GmEnsemble::LATENCY == QUANTUM);

    std::unique_ptr<GmEnsemble> ensemble; // large
    alignas(16) float quantum[2 * QUANTUM] = {};
    uint32_t left = 0; // frames of the quantum that are still to come
    bool has_begun = false;
};

} // namespace tarquil
