// White space as the C locale has it, whatever locale the host has set.

#pragma once

namespace tarquil {

constexpr bool is_white_space(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

} // namespace tarquil
