// Two banks as the sounds of the General MIDI dialect.

#pragma once

#include "instrument/settings.h"
#include "midi/gm/gm_sounds.h"

namespace tarquil {

// `drums` may be null.  The banks stay where they are as long as the views are used; what is not
// named is the caller's to add.
inline GmSounds drum_sounds_of(const TarqSettings* drums) {
    GmSounds sounds;
    for (unsigned i = 0; drums != nullptr && i < GM_PROGRAMS; i++)
        sounds.drums[i] = &drums->get_instrument(i).get_bytes();
    return sounds;
}

inline GmSounds sounds_of(const TarqSettings& melodic, const TarqSettings* drums) {
    GmSounds sounds = drum_sounds_of(drums);
    for (unsigned i = 0; i < GM_PROGRAMS; i++)
        sounds.melodic[i] = &melodic.get_instrument(i).get_bytes();
    return sounds;
}

} // namespace tarquil
