// What the user does in the window, on its way to the host as the plug-in's output events.

#pragma once

#include <clap/events.h>

#include <atomic>

#include "common/spsc_queue.h"
#include "formats/common/host_controls.h"

namespace tarquil {

class WindowEdits {
  public:
    // Window's thread; a control's changes, within a gesture.  False when there was no room, and
    // the host has to be told to read all values.
    bool begin(uint32_t id) { return edits.push({Kind::BEGIN, id, 0}); }
    bool change(uint32_t id, int value) { return edits.push({Kind::VALUE, id, value}); }
    bool end(uint32_t id) { return edits.push({Kind::END, id, 0}); }

    // The thread that processes or flushes.  What the host does not take now follows later.
    void send(const clap_output_events& out);

  private:
    enum class Kind : uint8_t { BEGIN, VALUE, END };
    struct Edit {
        Kind kind = Kind::VALUE;
        uint32_t id = 0;
        int value = 0;
    };

    static bool send(const Edit& edit, const clap_output_events& out);

    SpscQueue<Edit, 2048> edits;
    Edit waiting; // that the host has not taken
    bool is_waiting = false;
};

// A parameter's new value at the block's start, for a host that has not set it.  False when it is
// not taken.  `flags`: CLAP_EVENT_*.
bool send_value(const clap_output_events& out, uint32_t id, int value, uint32_t flags);
// The begin or end of a gesture, as `type` says.
bool send_gesture(const clap_output_events& out, uint16_t type, uint32_t id);

} // namespace tarquil
