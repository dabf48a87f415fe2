// How a note stands, for those who show it: nothing here changes the sound.

#include <algorithm>

#include "softsynth/voices/voice.h"

namespace tarquil {

NoteView Voice::view(uint32_t start, uint32_t size) const {
    NoteView shown;
    shown.is_sounding = 1;
    shown.start_time = start_time;
    shown.note = uint32_t(note);
    for (unsigned i = 0; i < NUM_ENVELOPES; i++)
        shown.envelopes[i] = env_position(envelopes[i], start + size);
    for (unsigned i = 0; i < NUM_LFOS; i++)
        shown.lfo_phases[i] = lfos[i].get_phase();
    const uint32_t last = (size - 1) / CONTROL_PERIOD;
    const uint32_t offset = start_time > start ? std::min(start_time - start, size - 1) : 0;
    // What lies before the note has no modulation yet.
    const uint32_t first = std::min(last, (offset + CONTROL_PERIOD - 1) / CONTROL_PERIOD);
    const auto [lowest, highest] =
        std::minmax_element(signals.cutoff + first, signals.cutoff + last + 1);
    shown.cutoff = signals.cutoff[last];
    shown.lowest_cutoff = *lowest;
    shown.highest_cutoff = *highest;
    shown.resonance = signals.resonance[last];
    return shown;
}

} // namespace tarquil
