// What files and folders hold.

#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>

#include "common/load_string.h"

namespace tarquil {

inline std::string file_text(const std::string& path) {
    std::string text;
    EXPECT_EQ(load_file_to_string(path, text), 0) << path;
    return text;
}

inline std::set<std::string> names_in(const std::string& folder) {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.insert(entry.path().filename().string());
    return names;
}

} // namespace tarquil
