// JSON as the commands print it.

#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace tarquil {

// Indented, with a line feed at the end.  Names come from files: bytes that are not UTF-8 become
// the replacement character.
inline std::string json_text(const nlohmann::ordered_json& value) {
    return value.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
}

} // namespace tarquil
