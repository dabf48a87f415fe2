// The extension by which a plug-in asks its host to change a control input, from what is published
// of it.

#pragma once

#include <cstdint>

namespace tarquil {

#define LV2_PORT_CHANGE_REQUEST_URI "http://kx.studio/ns/lv2ext/control-input-port-change-request"

// The feature's data.  To be called within run(); 0 when the host does it.
struct Lv2PortChangeRequest {
    void* handle;
    int32_t (*request_change)(void* handle, uint32_t port, float value);
};

} // namespace tarquil
