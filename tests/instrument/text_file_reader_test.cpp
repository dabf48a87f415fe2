// Tests of reading key/value text.

#include "instrument/text_file_reader.h"

#include <gtest/gtest.h>

namespace tarquil {

namespace {

// The value of `key` in `text`, which must load.
std::string value_in(std::string_view text, std::string_view key) {
    TextFileReader reader;
    EXPECT_EQ(reader.load_from_string(text), 0) << text;
    std::string value = "(none)";
    reader.get_str(key, value);
    return value;
}

TEST(TextFileReader, KeysAndValuesAreTrimmedOnOneSide) {
    EXPECT_EQ(value_in("a=b", "a"), "b");
    EXPECT_EQ(value_in("a = b # note", "a"), "b ");
    EXPECT_EQ(value_in(" a=1", "a"), "(none)");
    EXPECT_EQ(value_in(" a=1", " a"), "1");
    EXPECT_EQ(value_in("a \t\v= \t b c ", "a"), "b c ");
    EXPECT_EQ(value_in("a=b=c", "a"), "b=c");
    EXPECT_EQ(value_in("=b", ""), "b");
    EXPECT_EQ(value_in("a b=c", "a b"), "c");
    EXPECT_EQ(value_in("a =   ", "a"), " ");
    EXPECT_EQ(value_in("a =  \t", "a"), "\t");
}

TEST(TextFileReader, EveryLineEndingSeparates) {
    for (const char* text :
         {"a=1\nb=2", "a=1\rb=2", "a=1\r\nb=2\r\n", "\n\n#c\n \t\na=1\n#=\nb=2\n"}) {
        EXPECT_EQ(value_in(text, "a"), "1");
        EXPECT_EQ(value_in(text, "b"), "2");
    }
}

TEST(TextFileReader, AByteOrderMarkAtTheStartIsSkipped) {
    EXPECT_EQ(value_in("\xEF\xBB\xBF"
                       "a=1\nb=2",
                       "a"),
              "1");
    EXPECT_EQ(value_in("a=1\n\xEF\xBB\xBF"
                       "b=2",
                       "b"),
              "(none)");
    EXPECT_EQ(value_in("\xEF\xBB\xBF\xEF\xBB\xBF"
                       "a=1",
                       "a"),
              "(none)");
}

TEST(TextFileReader, TheFirstOfEqualKeysCounts) {
    EXPECT_EQ(value_in("a=1\na=2", "a"), "1");
    TextFileReader reader;
    EXPECT_EQ(reader.load_from_string("a=1"), 0);
    EXPECT_EQ(reader.load_from_string("a=2\nb=3"), 0);
    float value = 0.0F;
    EXPECT_TRUE(reader.get_float("a", value));
    EXPECT_EQ(value, 1.0F);
    EXPECT_TRUE(reader.get_float("b", value));
    EXPECT_EQ(value, 3.0F);
}

TEST(TextFileReader, ABrokenLineEndsTheLoadAndKeepsWhatWasBeforeIt) {
    for (const char* text : {"a=1\nbroken\nb=2", "a=1\nb=\nb=2", "a=1\nb = # note\n=\nb=2",
                             "a=1\n\vx", "a=1\n\v\nb=2"}) {
        TextFileReader reader;
        EXPECT_EQ(reader.load_from_string(text), 6) << text;
        std::string value = "untouched";
        EXPECT_TRUE(reader.get_str("a", value));
        EXPECT_EQ(value, "1");
    }
    TextFileReader reader;
    EXPECT_EQ(reader.load_from_string(""), 0);
    EXPECT_EQ(reader.load_from_string("# only\n\t\n\r\n"), 0);
    std::string value = "untouched";
    EXPECT_FALSE(reader.get_str("a", value));
    EXPECT_EQ(value, "untouched");
    float number = 5.0F;
    EXPECT_FALSE(reader.get_float("a", number));
    EXPECT_EQ(number, 5.0F);
}

} // namespace

} // namespace tarquil
