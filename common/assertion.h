// Assertions that guard programming errors, active in every build type.

#pragma once

namespace tarquil {

// Prints "Assert failure at FILE:LINE: EXPRESSION" to standard error and stops the process with a
// trap.  `file` is the path relative to the source root.
[[noreturn]] void assertion_failed(const char* file, int line, const char* expression);

#define TARQ_ASSERT(expression)                                                                    \
    (static_cast<bool>(expression) ? void(0) : assertion_failed(__FILE__, __LINE__, #expression))

} // namespace tarquil
