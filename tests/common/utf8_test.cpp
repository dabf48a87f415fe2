// Tests of finding the characters of a text.

#include "common/utf8.h"

#include <gtest/gtest.h>

namespace tarquil {

namespace {

TEST(Utf8, APrefixEndsBetweenCharacters) {
    // One, two, three and four bytes.
    const std::string_view text = "a\xC3\xA9\xE2\x82\xAC\xF0\x9D\x84\x9E!";
    const size_t lengths[] = {0, 1, 1, 3, 3, 3, 6, 6, 6, 6, 10, 11, 11};
    for (size_t room = 0; room < std::size(lengths); room++)
        EXPECT_EQ(utf8_prefix(text, room), text.substr(0, lengths[room])) << room;
    EXPECT_EQ(utf8_prefix("", 0), "");
}

TEST(Utf8, CharactersAreCountedAndKnown) {
    const std::pair<std::string_view, char32_t> characters[] = {
        {"a", U'a'}, {"\xC3\xA9", 0xE9}, {"\xE2\x82\xAC", 0x20AC}, {"\xF0\x9D\x84\x9E", 0x1D11E}};
    std::string text;
    for (const auto& [bytes, code_point] : characters) {
        EXPECT_EQ(utf8_code_point(bytes, utf8_length(bytes)), code_point);
        text += bytes;
    }
    EXPECT_EQ(utf8_count(text), std::size(characters));
}

TEST(Utf8, WhatIsNoUtf8IsCutWhereTheRoomEnds) {
    for (const std::string_view text : {"\xA9\xA9\xA9\xA9\xA9\xA9", "\xE9\xE9\xE9\xE9\xE9\xE9",
                                        "a\xC3\xA9\xA9\xA9\xA9", "\xF8\x80\x80\x80\x80\x80"})
        EXPECT_EQ(utf8_prefix(text, 4), text.substr(0, 4));
    EXPECT_EQ(utf8_prefix("a\xC3\xA9\xA9\xA9", 3), "a\xC3\xA9");
}

} // namespace

} // namespace tarquil
