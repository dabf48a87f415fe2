// The sounds that the user likes, by their ids.

#pragma once

#include <set>
#include <string>

namespace tarquil {

class Favourites {
  public:
    // Empty where the file is missing.
    explicit Favourites(std::string file_path);

    [[nodiscard]] bool has(const std::string& id) const { return ids.contains(id); }
    // Adds it or takes it away.  Empty, or why that could not be kept; it holds for now all the
    // same.
    std::string toggle(const std::string& id);

  private:
    const std::string path;
    std::set<std::string> ids; // none has a line break
};

} // namespace tarquil
