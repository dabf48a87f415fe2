// Numbers as text, as the C locale writes and reads them.

#include "common/number_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <system_error>

#include "common/characters.h"

namespace tarquil {

namespace {

// The longest double has 309 digits before the point, six after it, a point and a sign.
constexpr size_t LONGEST_NUMBER = 320;

constexpr int DIGITS_AFTER_POINT = 6;

bool is_digit_of(char c, bool hex) {
    const char lower = lower_case(c);
    return is_digit(c) || (hex && lower >= 'a' && lower <= 'f');
}

// Whether a number that no double can hold is too large rather than too small: the sign of the
// exponent of its first significant digit.  `text` starts with the number's first digit or point.
bool is_too_large(std::string_view text, bool hex) {
    // Any exponent beyond this is as good as this one: no text has so many digits.
    constexpr long long EXPONENT_LIMIT = 1LL << 56;
    long long digits_before_point = 0; // those from the first significant digit on
    bool seen_point = false;
    bool significant = false;
    size_t i = 0;
    for (; i < text.size() && (is_digit_of(text[i], hex) || (text[i] == '.' && !seen_point)); i++) {
        seen_point = seen_point || text[i] == '.';
        significant = significant || (text[i] != '0' && text[i] != '.');
        if (significant && !seen_point)
            digits_before_point++;
        else if (!significant && seen_point && text[i] == '0')
            digits_before_point--;
    }
    long long exponent = 0;
    if (i < text.size() && (text[i] | 0x20) == (hex ? 'p' : 'e')) {
        i++;
        const bool negative = i < text.size() && text[i] == '-';
        if (i < text.size() && (text[i] == '-' || text[i] == '+'))
            i++;
        for (; i < text.size() && is_digit_of(text[i], false); i++)
            exponent = std::min(EXPONENT_LIMIT, exponent * 10 + (text[i] - '0'));
        if (negative)
            exponent = -exponent;
    }
    return digits_before_point * (hex ? 4 : 1) + exponent > 0;
}

// `text` up to an exponent that has no digits: `from_chars` takes "p+-1" for "p-1".
std::string_view without_broken_exponent(std::string_view text) {
    const size_t p = text.find_first_of("pP");
    if (p == std::string_view::npos)
        return text;
    const bool has_sign = p + 1 < text.size() && (text[p + 1] == '+' || text[p + 1] == '-');
    const size_t digit = has_sign ? p + 2 : p + 1;
    return digit < text.size() && is_digit_of(text[digit], false) ? text : text.substr(0, p);
}

// The number at the start of `text`, which has no sign any more; nothing if there is none.
std::optional<double> read_magnitude(std::string_view text) {
    const bool hex = text.size() > 2 && text[0] == '0' && (text[1] | 0x20) == 'x' &&
                     (is_digit_of(text[2], true) ||
                      (text[2] == '.' && text.size() > 3 && is_digit_of(text[3], true)));
    if (hex)
        text = without_broken_exponent(text.substr(2));
    if (text.empty() || text.front() == '-') // the one sign has been read
        return std::nullopt;
    double value = 0.0;
    const std::from_chars_result result =
        std::from_chars(text.data(), text.data() + text.size(), value,
                        hex ? std::chars_format::hex : std::chars_format::general);
    if (result.ec == std::errc::result_out_of_range)
        return is_too_large(text, hex) ? std::numeric_limits<double>::infinity() : 0.0;
    if (result.ec != std::errc())
        return std::nullopt;
    return value;
}

// A float with so few digits before its point that they and six behind it are an integer without
// rounding: 24 bits of mantissa, 14 of 10^6 = 2^6 * 15625.
bool has_exact_millionths(double value) {
    return std::fabs(value) < 1e9 && double(float(value)) == value;
}

// Rounded half to even, as "%f" rounds.
void append_millionths(std::string& text, double value) {
    const double exact = std::fabs(value) * 1e6;
    auto millionths = uint64_t(exact);
    const double rest = exact - double(millionths);
    millionths += rest > 0.5 || (rest == 0.5 && millionths % 2 != 0) ? 1 : 0;
    char buffer[24];
    char* first = buffer + sizeof(buffer);
    for (int digit = 0; digit <= DIGITS_AFTER_POINT || millionths != 0; digit++) {
        if (digit == DIGITS_AFTER_POINT)
            *--first = '.';
        *--first = char('0' + millionths % 10);
        millionths /= 10;
    }
    if (std::signbit(value))
        *--first = '-';
    text.append(first, buffer + sizeof(buffer));
}

} // namespace

void append_number(std::string& text, double value) {
    if (has_exact_millionths(value)) {
        append_millionths(text, value);
        return;
    }
    char buffer[LONGEST_NUMBER];
    const std::to_chars_result result = std::to_chars(buffer, buffer + sizeof(buffer), value,
                                                      std::chars_format::fixed, DIGITS_AFTER_POINT);
    text.append(buffer, result.ptr);
}

std::string number_to_text(double value) {
    std::string text;
    append_number(text, value);
    return text;
}

std::string fixed_number(double value, int decimals) {
    char buffer[LONGEST_NUMBER];
    const std::to_chars_result end =
        std::to_chars(buffer, buffer + sizeof(buffer), value, std::chars_format::fixed, decimals);
    std::string text(buffer, end.ptr);
    if (text.front() == '-' && text.find_first_not_of("-0.") == std::string::npos)
        text.erase(0, 1);
    return text;
}

std::string trimmed_number(double value, int decimals) {
    std::string text = fixed_number(value, decimals);
    if (text.find('.') == std::string::npos)
        return text;
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.')
        text.pop_back();
    return text;
}

double text_to_number(std::string_view text) {
    text = trimmed_start(text);
    const bool negative = !text.empty() && text.front() == '-';
    if (negative || (!text.empty() && text.front() == '+'))
        text.remove_prefix(1);
    const std::optional<double> magnitude = read_magnitude(text);
    if (!magnitude)
        return 0.0;
    return negative ? -*magnitude : *magnitude;
}

} // namespace tarquil
