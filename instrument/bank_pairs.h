// The lines of a bank's text, sorted by what they are for.

#pragma once

#include <array>
#include <string_view>

#include "instrument/controller_bytes.h"
#include "instrument/kept_lines.h"
#include "instrument/load_report.h"
#include "instrument/settings.h"
#include "instrument/text_lines.h"

namespace tarquil {

// Of compact states.
inline constexpr int STATE_VERSION = 2;

inline constexpr std::string_view GENERAL_MIDI_VALUE = "gm";
inline constexpr std::string_view ON_VALUE = "on";

// Views of the text that was read; the first of equal keys counts.
struct BankPairs {
    // 0 or BROKEN_LINE.
    int read(std::string_view text, LoadReport* report);

    [[nodiscard]] bool is_compact() const { return !version.empty(); }

    // Whether it is one that this program reads; so is a text without a version.
    [[nodiscard]] bool is_known_version() const;

    [[nodiscard]] MissingKeys missing() const {
        return is_compact() ? MissingKeys::EXPECTED : MissingKeys::REPORTED;
    }

    ControllerValues globals{global_controller_rows()};
    std::array<std::string_view, MAX_INSTRUMENTS> sources; // of the instruments
    std::string_view title;
    std::string_view author;
    std::string_view version;
    KeptLines others; // the switches' among them

  private:
    std::string_view* field_of(std::string_view key);
    void take_switch(const TextPair& line, std::string_view usual, std::string_view other,
                     LoadReport* report);
    void take_other(const TextPair& line, LoadReport* report);
};

} // namespace tarquil
