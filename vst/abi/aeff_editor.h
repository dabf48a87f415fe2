// What the frame asks of an editor.

#pragma once

#include "vst/abi/vst2.h"

namespace tarquil {

class AEffEditor {
  public:
    AEffEditor() = default;
    AEffEditor(const AEffEditor&) = delete;
    AEffEditor& operator=(const AEffEditor&) = delete;
    virtual ~AEffEditor() = default;

    // Points `*rect` at the window's size in pixels, valid until the next call.
    virtual bool getRect(ERect** rect) = 0;

    // `parent` is the host's window (an X11 window number on Linux).  False when no window could be
    // made.  A second open without a close replaces the first.
    virtual bool open(void* parent) = 0;
    virtual void close() = 0;
    [[nodiscard]] virtual bool isOpen() const = 0;

    // Called by the host's user interface thread many times a second: events, then drawing.
    virtual void idle() = 0;
};

} // namespace tarquil
