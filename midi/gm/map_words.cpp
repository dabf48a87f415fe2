// The words of a map's value, taken one after the other.

#include "midi/gm/map_words.h"

#include <algorithm>
#include <cmath>

#include "common/number_text.h"

namespace tarquil {

bool MapWords::at_end() {
    rest.remove_prefix(std::min(rest.find_first_not_of(" \t"), rest.size()));
    return rest.empty();
}

std::string_view MapWords::take(const char* what) {
    if (at_end()) {
        fail(std::string(what) + " is missing");
        return {};
    }
    const size_t length = std::min(rest.find_first_of(" \t"), rest.size());
    const std::string_view word = rest.substr(0, length);
    rest.remove_prefix(length);
    return word;
}

double MapWords::take_number(const char* what, double least, double most) {
    return number(take(what), what, least, most);
}

unsigned MapWords::take_whole(const char* what, unsigned least, unsigned most) {
    return whole(take(what), what, least, most);
}

double MapWords::number(std::string_view word, const char* what, double least, double most) {
    const double value = text_to_number(word);
    if (word.find_first_not_of("+-.0123456789") == std::string_view::npos &&
        word.find_first_of("0123456789") != std::string_view::npos && value >= least &&
        value <= most)
        return value;
    fail(std::string(what) + " " + quoted(word) + " is not a number from " +
         trimmed_number(least, 1) + " to " + trimmed_number(most, 1));
    return least;
}

unsigned MapWords::whole(std::string_view word, const char* what, unsigned least, unsigned most) {
    const double value = number(word, what, least, most);
    if (value != std::floor(value)) {
        fail(std::string(what) + " " + quoted(word) + " is not a whole number");
        return least;
    }
    return unsigned(value);
}

void MapWords::expect_end() {
    if (!at_end())
        fail(quoted(rest) + " is too much");
}

void MapWords::fail(const std::string& reason) {
    if (first_error.empty())
        first_error = reason;
}

} // namespace tarquil
