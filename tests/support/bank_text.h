// A bank as its file's text.

#pragma once

#include <string>

#include "instrument/settings.h"

namespace tarquil {

inline std::string text_of(const TarqSettings& bank) {
    std::string text;
    bank.text_save_to_string(text);
    return text;
}

} // namespace tarquil
