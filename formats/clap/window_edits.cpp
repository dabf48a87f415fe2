// What the user does in the window, on its way to the host.

#include "formats/clap/window_edits.h"

namespace tarquil {

namespace {

template <typename Event> clap_event_header header_of(uint16_t type, uint32_t flags) {
    return {.size = sizeof(Event),
            .time = 0,
            .space_id = CLAP_CORE_EVENT_SPACE_ID,
            .type = type,
            .flags = flags};
}

} // namespace

bool send_gesture(const clap_output_events& out, uint16_t type, uint32_t id) {
    const clap_event_param_gesture event = {
        .header = header_of<clap_event_param_gesture>(type, CLAP_EVENT_IS_LIVE), .param_id = id};
    return out.try_push(&out, &event.header);
}

bool send_value(const clap_output_events& out, uint32_t id, int value, uint32_t flags) {
    const clap_event_param_value event = {
        .header = header_of<clap_event_param_value>(CLAP_EVENT_PARAM_VALUE, flags),
        .param_id = id,
        .cookie = const_cast<HostControl*>(find_host_control(id)),
        .note_id = -1,
        .port_index = -1,
        .channel = -1,
        .key = -1,
        .value = double(value)};
    return out.try_push(&out, &event.header);
}

bool WindowEdits::send(const Edit& edit, const clap_output_events& out) {
    switch (edit.kind) {
    case Kind::BEGIN:
        return send_gesture(out, CLAP_EVENT_PARAM_GESTURE_BEGIN, edit.id);
    case Kind::END:
        return send_gesture(out, CLAP_EVENT_PARAM_GESTURE_END, edit.id);
    default:
        return send_value(out, edit.id, edit.value, CLAP_EVENT_IS_LIVE);
    }
}

void WindowEdits::send(const clap_output_events& out) {
    while (is_waiting || edits.pop(waiting)) {
        is_waiting = !send(waiting, out);
        if (is_waiting)
            return;
    }
}

} // namespace tarquil
