// Tests of numbers as text, against the C library in the C locale.

#include "common/number_text.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <sstream>

#include "softsynth/parameters/controller_table.h"
#include "tests/decimal_comma_locale.h"

namespace tarquil {

namespace {

std::string printed(double value) {
    char buffer[400];
    std::snprintf(buffer, sizeof(buffer), "%f", value);
    return buffer;
}

void expect_as_atof(const std::string& text) {
    const double expected = std::strtod(text.c_str(), nullptr);
    const double value = text_to_number(text);
    EXPECT_EQ(std::isnan(value), std::isnan(expected)) << text;
    if (!std::isnan(expected)) {
        EXPECT_EQ(std::bit_cast<uint64_t>(value), std::bit_cast<uint64_t>(expected)) << text;
    }
}

TEST(NumberText, ReadsAsTheCLibraryDoes) {
    std::stringstream texts(
        "|  |0|-0|+7.25|-+5|+-5|--5| \t\v\f\r\n1.5|1,5|.5|5.|.|-.|1e3|1e|1e+|1E-3x|12abc|abc|"
        "0x10|0X1p-3|-0x.8p1|0x|0x.|0xg|0x1p|0x1p+|0xcp+-989|0x-5|inf|-INF|infinity|infinit|"
        "nan|-NaN(12)z|nano|1e400|-1e400|1e-400|1e999999999999999999999|"
        "1e-999999999999999999999|0e999999999999999999999|0x1p99999|0x1p-99999|1e308|1.8e308|"
        "4.9e-324|2.4e-324|1e-310|179769313486231580793e289|"
        "0.000000000000000000000000000001e400|0x0.00001p1040|0x1.fffffffffffff8p1023|"
        "0x0.0000000000001p-1070|0x1p-1075|0x1.00000000000001p-1074|1.7976931348623159e308|");
    for (std::string text; std::getline(texts, text, '|');)
        expect_as_atof(text);
    expect_as_atof(std::string(1000, '9'));
    expect_as_atof("0." + std::string(1000, '0') + "1e1001");
    expect_as_atof("0." + std::string(1000, '0') + "1");
    EXPECT_EQ(text_to_number(std::string_view("12\0003", 4)), 12.0);
    EXPECT_EQ(text_to_number(std::string_view("1234", 2)), 12.0);
}

TEST(NumberText, WritesAsTheCLibraryDoes) {
    for (const double value :
         {0.0, -0.0, 0.5, 1e-7, 5e-7, 0.1234565, 127.0, -2.0 / 127, 1e22, -1e308,
          double(std::numeric_limits<float>::max()), std::numeric_limits<double>::infinity(),
          -std::numeric_limits<double>::infinity(), std::nan("")})
        EXPECT_EQ(number_to_text(value), printed(value));
    // Floats have a form of their own: exact halves, and what rounding carries into.
    for (const float value : {0.9999999F, -1e-9F, 999999.9375F, 1e9F, 1e30F})
        EXPECT_EQ(number_to_text(double(value)), printed(double(value)));
    std::mt19937 random(7);
    for (int i = 0; i < 100000; i++) {
        // Halves of a millionth: k / 128 has seven digits.
        for (const float size : {std::ldexp(float(random()), int(random() % 70) - 60),
                                 float(random() % 100000) / 128.0F}) {
            const double value = i % 2 == 0 ? double(size) : -double(size);
            ASSERT_EQ(number_to_text(value), printed(value));
        }
    }
}

TEST(NumberText, TheHostsLocaleIsWithoutInfluence) {
    const DecimalCommaLocale locale;
    if (!locale.available())
        GTEST_SKIP() << "no locale with a decimal comma";
    ASSERT_EQ(printed(0.5), "0,500000");
    EXPECT_EQ(number_to_text(0.5), "0.500000");
    EXPECT_EQ(text_to_number("0.5"), 0.5);
    EXPECT_EQ(text_to_number("0,5"), 0.0);
    testing::internal::CaptureStdout();
    map_float_to_char(CTRL_MAIN_VOLUME, -0.5F);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Controller 7 value -0.500000 out of range, clamping to lowest\n");
}

TEST(NumberText, RoundedNumbersHaveNoSignOnZeroAndTrimmedOnesNoLastZeros) {
    EXPECT_EQ(fixed_number(-0.004, 2), "0.00");
    EXPECT_EQ(fixed_number(-0.006, 2), "-0.01");
    EXPECT_EQ(fixed_number(1234.5, 0), "1234");
    EXPECT_EQ(fixed_number(-1e300, 9).size(), 312U);
    EXPECT_EQ(trimmed_number(2.5, 4), "2.5");
    EXPECT_EQ(trimmed_number(100.0, 2), "100");
    EXPECT_EQ(trimmed_number(100.0, 0), "100");
    EXPECT_EQ(trimmed_number(-0.0001, 2), "0");
}

} // namespace

} // namespace tarquil
