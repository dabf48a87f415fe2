// The plug-in's editor, as hosts of the interface open it.

#include "vst/tarq_editor.h"

#include "vst/tarq_vst.h"

namespace tarquil {

TarqEditor::TarqEditor(TarqVST& edited_plugin)
    : teller(edited_plugin), synth(edited_plugin.player(), teller),
      frame(edited_plugin.player(), synth) {
    frame.on_resize = [&edited_plugin](int width, int height) {
        edited_plugin.sizeWindow(width, height);
    };
}

bool TarqEditor::getRect(ERect** result) {
    rect.right = int16_t(frame.width());
    rect.bottom = int16_t(frame.height());
    *result = &rect;
    return true;
}

bool TarqEditor::open(void* parent) {
    return parent != nullptr && frame.open(reinterpret_cast<uintptr_t>(parent));
}

} // namespace tarquil
