// The wavetables that all players of the process read.

#include "player/shared_waveforms.h"

#include "common/platform/user_folder.h"

namespace tarquil {

const WaveformStore& shared_waveforms() {
    static const WaveformStore store(waveform_cache_folder());
    return store;
}

std::string waveform_cache_folder() {
    const std::string base = user_folder("XDG_CACHE_HOME", ".cache");
    return base.empty() ? "" : base + "/tarquil";
}

} // namespace tarquil
