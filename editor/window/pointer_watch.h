// Whether the pointer has left a window, which the toolkit does not tell.

#pragma once

#include <cstdint>

#include "editor/window/x_error_trap.h"

namespace tarquil {

class PointerWatch {
  public:
    explicit PointerWatch(uintptr_t window);

    // Since the last call.
    [[nodiscard]] bool has_left();

  private:
    XConnection connection;
};

} // namespace tarquil
