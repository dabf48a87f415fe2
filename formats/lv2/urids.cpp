// The numbers that a host gives to the names that are used in messages.

#include "formats/lv2/urids.h"

#include <lv2/atom/atom.h>
#include <lv2/midi/midi.h>
#include <lv2/patch/patch.h>
#include <lv2/state/state.h>
#include <lv2/time/time.h>

#include "formats/lv2/lv2_names.h"

namespace tarquil {

Urids::Urids(LV2_URID_Map& map) {
    const auto number = [&](const char* name) { return map.map(map.handle, name); };
    atom_double = number(LV2_ATOM__Double);
    atom_float = number(LV2_ATOM__Float);
    atom_int = number(LV2_ATOM__Int);
    atom_long = number(LV2_ATOM__Long);
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
    time_bar = number(LV2_TIME__bar);
    time_bar_beat = number(LV2_TIME__barBeat);
    time_beat_unit = number(LV2_TIME__beatUnit);
    time_beats_per_bar = number(LV2_TIME__beatsPerBar);
    time_beats_per_minute = number(LV2_TIME__beatsPerMinute);
    time_position = number(LV2_TIME__Position);
    time_speed = number(LV2_TIME__speed);
    state = number(TARQUIL_LV2_STATE_URI);
    program = number(TARQUIL_LV2_PROGRAM_URI);
    file = number(TARQUIL_LV2_FILE_URI);
}

} // namespace tarquil
