// Texts into buffers of the host.

#include "vst/abi/host_text.h"

#include <algorithm>
#include <cstring>

#include "common/number_text.h"

namespace tarquil {

void copy_host_text(char* buffer, std::string_view text, size_t room) {
    const size_t length = std::min(text.size(), room - 1);
    std::memcpy(buffer, text.data(), length);
    buffer[length] = '\0';
}

void float2string(float value, char* buffer, size_t room, int digits) {
    copy_host_text(buffer, fixed_number(double(value), digits), room);
}

} // namespace tarquil
