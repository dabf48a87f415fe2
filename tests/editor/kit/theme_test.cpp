// Tests that every theme can be read: contrasts by the formula of WCAG 2.1.

#include "editor/kit/theme.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace tarquil {

namespace {

// 0..1
double luminance(uint32_t rgb) {
    const auto part = [rgb](unsigned shift) {
        const double value = double(rgb >> shift & 0xFFU) / 255;
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(16) + 0.7152 * part(8) + 0.0722 * part(0);
}

double contrast(ThemeKind theme, Ink one, Ink other) {
    const double a = luminance(palette_of(theme)[size_t(one)]);
    const double b = luminance(palette_of(theme)[size_t(other)]);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

using Pairs = std::vector<std::pair<Ink, Ink>>;

constexpr Ink GROUNDS[] = {Ink::BACKGROUND, Ink::HEADER,  Ink::PANEL,
                           Ink::WELL,       Ink::CONTROL, Ink::HOVER};

Pairs with_grounds(std::initializer_list<Ink> inks) {
    Pairs pairs;
    for (const Ink ink : inks) {
        for (const Ink ground : GROUNDS)
            pairs.emplace_back(ink, ground);
    }
    return pairs;
}

void expect_contrast(const Pairs& pairs, double least) {
    for (const ThemeKind theme : ALL_THEMES) {
        for (const auto& [one, other] : pairs)
            EXPECT_GE(contrast(theme, one, other), least)
                << theme_key(theme) << ": inks " << int(one) << " and " << int(other);
    }
}

TEST(Theme, TextStandsOutFromWhateverIsBehindIt) {
    Pairs pairs = with_grounds({Ink::TEXT, Ink::TEXT_MUTED, Ink::TEXT_DIM});
    const Pairs more = {
        {Ink::TEXT, Ink::ACCENT_DIM},     {Ink::TEXT_MUTED, Ink::ACCENT_DIM},
        {Ink::KEY_LABEL, Ink::WHITE_KEY}, {Ink::TEXT, Ink::MUTED},
        {Ink::TEXT, Ink::TOOLTIP},        {Ink::TEXT_MUTED, Ink::TOOLTIP},
        {Ink::ACCENT, Ink::HEADER},       {Ink::ACCENT, Ink::WELL},
        {Ink::ACCENT, Ink::HOVER},        {Ink::WARM, Ink::BACKGROUND},
        {Ink::BACKGROUND, Ink::WARM},     {Ink::GREEN, Ink::BACKGROUND},
        {Ink::GREEN, Ink::PANEL},         {Ink::RED, Ink::BACKGROUND},
        {Ink::RED, Ink::PANEL},           {Ink::WELL, Ink::PART_1},
        {Ink::WELL, Ink::PART_2},         {Ink::WELL, Ink::PART_3},
        {Ink::WELL, Ink::PART_4},         {Ink::WELL, Ink::PART_5},
        {Ink::WELL, Ink::PART_6},
    };
    pairs.insert(pairs.end(), more.begin(), more.end());
    expect_contrast(pairs, 4.5);
}

TEST(Theme, EdgesOfControlsAndWhatIsFocusedCanBeSeen) {
    Pairs pairs = with_grounds({Ink::OUTLINE, Ink::ACCENT, Ink::FOCUS});
    for (const Ink slot : {Ink::PANEL, Ink::WELL})
        pairs.emplace_back(Ink::THUMB, slot);
    expect_contrast(pairs, 3.0);
}

} // namespace

} // namespace tarquil
