// A plug-in that plays a song: a host without a clock.

#pragma once

#include <vector>

#include "instrument/settings.h"
#include "player/tempo_clock.h"
#include "tools/plugin/loaded_plugin.h"
#include "tools/render/song_driver.h"

namespace tarquil {

class PluginDriver : public SongDriver {
  public:
    // Loads the plug-in of the options.  `bank` replaces its programs unless it is null, which only
    // Tarquil can do: BadInput for another plug-in, as for one that does not load.
    PluginDriver(const Song& played_song, const RenderOptions& options, const TarqSettings* bank);

    [[nodiscard]] uint32_t block() const override { return block_size; }

  protected:
    void queue_message(uint32_t time, uint32_t block_start, const uint8_t* bytes) override;
    void queue_tempo(const HostTempo& said, uint32_t time, uint32_t block_start) override;
    void run(float* pcm, uint32_t frames, uint32_t block_start) override;

  private:
    // A file made to fill the memory with events at one time stops here.
    static constexpr size_t MAX_EVENTS = 262144;

    const uint32_t block_size;
    LoadedPlugin plugin;
    std::vector<VstMidiEvent> messages; // of the current block
    TempoClock tempo_clock;
};

} // namespace tarquil
