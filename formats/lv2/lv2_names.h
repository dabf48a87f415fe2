// What the plug-in and its parts are called in LV2.

#pragma once

#define TARQUIL_LV2_URI "urn:tarquil:synth"
#define TARQUIL_LV2_PREFIX TARQUIL_LV2_URI "#"
#define TARQUIL_LV2_UI_URI TARQUIL_LV2_PREFIX "ui"
// The saved state, a text.
#define TARQUIL_LV2_STATE_URI TARQUIL_LV2_PREFIX "state"
// What patch messages get and set: the edited program, which channel 1 then plays, and a bank's or
// an instrument's file to load.
#define TARQUIL_LV2_PROGRAM_URI TARQUIL_LV2_PREFIX "program"
#define TARQUIL_LV2_FILE_URI TARQUIL_LV2_PREFIX "file"
