// The words of a map's value, taken one after the other.  The first thing that is wrong is kept.

#pragma once

#include <string>
#include <string_view>

namespace tarquil {

class MapWords {
  public:
    explicit MapWords(std::string_view value) : rest(value) {}

    [[nodiscard]] bool at_end();

    // The next word, or its number within a range; when that is not there or wrong, `what` names it
    // in the error, and an empty word or `least` comes back.
    std::string_view take(const char* what);
    double take_number(const char* what, double least, double most);
    unsigned take_whole(const char* what, unsigned least, unsigned most);
    double number(std::string_view word, const char* what, double least, double most);
    unsigned whole(std::string_view word, const char* what, unsigned least, unsigned most);

    // That all words are taken.
    void expect_end();

    void fail(const std::string& reason);
    [[nodiscard]] bool ok() const { return first_error.empty(); }
    [[nodiscard]] const std::string& error() const { return first_error; }

  private:
    std::string_view rest;
    std::string first_error;
};

inline std::string quoted(std::string_view text) {
    return "'" + std::string(text) + "'";
}

} // namespace tarquil
