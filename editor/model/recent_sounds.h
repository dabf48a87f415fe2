// The sounds that the user has loaded last, by their ids.

#pragma once

#include <string>
#include <vector>

namespace tarquil {

class RecentSounds {
  public:
    static constexpr size_t MAX_SOUNDS = 20;

    // Empty where the file is missing.
    explicit RecentSounds(std::string file_path);

    // The last one first.
    [[nodiscard]] const std::vector<std::string>& get_ids() const { return ids; }
    // It is the last one now.  Other windows' sounds are kept.  Empty, or why that could not be
    // kept; it holds for now all the same.
    std::string note(const std::string& id);

  private:
    const std::string path;
    std::vector<std::string> ids;
};

} // namespace tarquil
