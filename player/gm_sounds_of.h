// Two banks as the sounds of the General MIDI dialect.

#pragma once

#include "instrument/settings.h"
#include "midi/gm/gm_sounds.h"

namespace tarquil {

// `drums` may be null.  Both stay where they are as long as the views are used; the global bytes
// are the caller's to add.
inline GmSounds sounds_of(const TarqSettings& melodic, const TarqSettings* drums) {
    GmSounds sounds;
    for (unsigned i = 0; i < GM_PROGRAMS; i++) {
        sounds.melodic[i] = &melodic.get_instrument(i).get_bytes();
        if (drums != nullptr)
            sounds.drums[i] = &drums->get_instrument(i).get_bytes();
    }
    return sounds;
}

} // namespace tarquil
