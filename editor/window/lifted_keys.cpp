// Keys that came up while the window did not hear of it.

#include "editor/window/lifted_keys.h"

#include <utility>

#include <X11/Xlib.h>

namespace tarquil {

void LiftedKeys::look(const std::set<uint32_t>& down, const std::function<void(uint32_t)>& let_go) {
    if (down.empty()) {
        lifted.clear();
        return;
    }
    if (connection == nullptr)
        connection = std::make_unique<XConnection>();
    if (!connection->is_open())
        return;
    constexpr uint32_t BITS = 8;
    char keys[32] = {};
    XQueryKeymap(connection->display, keys);
    const std::set<uint32_t> lifted_before = std::exchange(lifted, {});
    for (const uint32_t code : std::set<uint32_t>(down)) {
        if (code / BITS >= sizeof(keys) || (unsigned(keys[code / BITS]) >> code % BITS & 1U) != 0)
            continue;
        lifted.insert(code);
        if (lifted_before.contains(code))
            let_go(code);
    }
}

} // namespace tarquil
