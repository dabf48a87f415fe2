// A MIDI message for a plug-in's object, as a host's batch of one.

#pragma once

#include "vst/tarq_vst.h"

namespace tarquil {

inline void send_midi(TarqVST& plugin, unsigned status, unsigned data1, unsigned data2,
                      int32_t delay = 0) {
    VstMidiEvent event;
    event.deltaFrames = delay;
    event.midiData[0] = char(status);
    event.midiData[1] = char(data1);
    event.midiData[2] = char(data2);
    VstEvents batch;
    batch.numEvents = 1;
    batch.events[0] = reinterpret_cast<VstEvent*>(&event);
    plugin.processEvents(&batch);
}

} // namespace tarquil
