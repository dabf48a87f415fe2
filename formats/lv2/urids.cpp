// The numbers that a host gives to the names that are used in messages.

#include "formats/lv2/urids.h"

#include <lv2/atom/atom.h>
#include <lv2/midi/midi.h>
#include <lv2/patch/patch.h>
#include <lv2/state/state.h>

#include "formats/lv2/lv2_names.h"

namespace tarquil {

Urids::Urids(LV2_URID_Map& map) {
    const auto number = [&](const char* name) { return map.map(map.handle, name); };
    atom_int = number(LV2_ATOM__Int);
    atom_object = number(LV2_ATOM__Object);
    atom_path = number(LV2_ATOM__Path);
    atom_string = number(LV2_ATOM__String);
    atom_urid = number(LV2_ATOM__URID);
    midi_event = number(LV2_MIDI__MidiEvent);
    patch_get = number(LV2_PATCH__Get);
    patch_property = number(LV2_PATCH__property);
    patch_set = number(LV2_PATCH__Set);
    patch_value = number(LV2_PATCH__value);
    state_changed = number(LV2_STATE__StateChanged);
    state = number(TARQUIL_LV2_STATE_URI);
    program = number(TARQUIL_LV2_PROGRAM_URI);
    file = number(TARQUIL_LV2_FILE_URI);
}

} // namespace tarquil
