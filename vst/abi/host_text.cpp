// Texts into buffers of the host.

#include "vst/abi/host_text.h"

#include <cstring>

#include "common/number_text.h"
#include "common/utf8.h"

namespace tarquil {

void copy_host_text(char* buffer, std::string_view text, size_t room) {
    text = utf8_prefix(text, room - 1);
    std::memcpy(buffer, text.data(), text.size());
    buffer[text.size()] = '\0';
}

void float2string(float value, char* buffer, size_t room, int digits) {
    copy_host_text(buffer, fixed_number(double(value), digits), room);
}

} // namespace tarquil
