// Numbers as text, as the C locale writes and reads them, whatever locale the host has set.

#pragma once

#include <string>
#include <string_view>

namespace tarquil {

// Appends `value` as "%f" prints it: six digits after the point, no exponent; "nan", "inf".
void append_number(std::string& text, double value);

// `value` as "%f" prints it.
std::string number_to_text(double value);

// `value` rounded to `decimals` digits after the point (at most 9), without a sign on what rounds
// to 0; and the same without the zeros that the fraction ends in.
std::string fixed_number(double value, int decimals);
std::string trimmed_number(double value, int decimals);

// The number at the start of `text` as `atof` reads it: after white space and a sign, a decimal or
// hexadecimal ("0x") number, "inf" or "nan" in any case.  What follows it is ignored; text that
// does not start with a number gives 0.  Beyond the range of a double: infinity or 0.
double text_to_number(std::string_view text);

} // namespace tarquil
