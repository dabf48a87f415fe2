// The numbers that a host gives to the names that are used in messages.

#pragma once

#include <lv2/urid/urid.h>

namespace tarquil {

struct Urids {
    explicit Urids(LV2_URID_Map& map);

    LV2_URID atom_double;
    LV2_URID atom_float;
    LV2_URID atom_int;
    LV2_URID atom_long;
    LV2_URID atom_object;
    LV2_URID atom_path;
    LV2_URID atom_string;
    LV2_URID atom_urid;
    LV2_URID midi_event;
    LV2_URID patch_get;
    LV2_URID patch_property;
    LV2_URID patch_set;
    LV2_URID patch_value;
    LV2_URID state_changed;
    LV2_URID time_bar;
    LV2_URID time_bar_beat;
    LV2_URID time_beat_unit;
    LV2_URID time_beats_per_bar;
    LV2_URID time_beats_per_minute;
    LV2_URID time_position;
    LV2_URID time_speed;
    LV2_URID state;   // ours
    LV2_URID program; // ours
    LV2_URID file;    // ours
};

} // namespace tarquil
