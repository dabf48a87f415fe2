// Keys that came up while the window did not hear of it: another one has the focus, or has grabbed
// the keyboard.

#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <set>

#include "editor/window/x_error_trap.h"

namespace tarquil {

class LiftedKeys {
  public:
    // To be called again and again: calls `let_go` for each key of `down`, by its X code, that the
    // server has had up at this look and the one before.
    void look(const std::set<uint32_t>& down, const std::function<void(uint32_t)>& let_go);

  private:
    std::unique_ptr<XConnection> connection; // from the first key on
    std::set<uint32_t> lifted;               // at the last look
};

} // namespace tarquil
