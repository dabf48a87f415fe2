// What a user has to know all the time: how the sound is played, or why it is wrong.

#pragma once

#include <string>

namespace tarquil {

struct EditorNotice {
    enum class Kind { NONE, STATE, WARNING } kind = Kind::NONE;
    std::string text{};

    bool operator==(const EditorNotice&) const = default;
};

} // namespace tarquil
