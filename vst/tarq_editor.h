// The plug-in's editor, as hosts of the interface open it.

#pragma once

#include "frame/editor_frame.h"
#include "frame/host_synth.h"
#include "vst/abi/aeff_editor.h"
#include "vst/edit_teller.h"

namespace tarquil {

class TarqEditor : public AEffEditor {
  public:
    explicit TarqEditor(TarqVST& edited_plugin);

    bool getRect(ERect** rect) override;
    bool open(void* parent) override;
    void close() override { frame.close(); }
    [[nodiscard]] bool isOpen() const override { return frame.is_open(); }
    void idle() override { frame.idle(); }

  private:
    EditTeller teller;
    HostSynth synth;
    EditorFrame frame;
    ERect rect;
};

} // namespace tarquil
