// A plug-in that plays a song: a host without a clock.

#pragma once

#include <vector>

#include "instrument/settings.h"
#include "tools/plugin/loaded_plugin.h"
#include "tools/render/song_driver.h"

namespace tarquil {

class PluginDriver : public SongDriver {
  public:
    // Loads the plug-in of the options.  `bank` replaces its programs unless it is null, which only
    // Tarquil can do: BadInput for another plug-in, as for one that does not load.
    PluginDriver(const Song& played_song, const RenderOptions& options, const TarqSettings* bank);

  protected:
    size_t queue_message(uint32_t time, uint32_t block_start, const uint8_t* bytes) override;
    void run(float* pcm, uint32_t num_samples, uint32_t block_start) override;

  private:
    LoadedPlugin plugin;
    std::vector<VstMidiEvent> messages; // of the current block
};

} // namespace tarquil
