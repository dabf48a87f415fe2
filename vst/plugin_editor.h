// What the plug-in asks of its editor, and where it gets one.

#pragma once

#include <memory>

#include "vst/abi/aeff_editor.h"

namespace tarquil {

class TarqVST;

class PluginEditor : public AEffEditor {
  public:
    // A value, a name or the bank has changed.  Called on any thread, the audio thread among them,
    // as isOpen is, and mostly with synth_lock held: an editor notes it and looks at the next idle.
    virtual void tarq_update() = 0;
};

// The editor of a new plug-in, which outlives it.  Null in a build without windows.
std::unique_ptr<PluginEditor> make_editor(TarqVST& plugin);

} // namespace tarquil
