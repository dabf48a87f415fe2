// The kinds of filters.

#pragma once

namespace tarquil {

enum FilterType : int {
    FILTER_NONE = 0,
    FILTER_LOWPASS = 1,
    FILTER_HIGHPASS = 2,
    FILTER_BANDPASS = 3,
    FILTER_NOTCH = 4,
    FILTER_ALLPASS = 5,
    FILTER_PEAKING_EQ = 6,
    FILTER_LOW_SHELF = 7,
    FILTER_HIGH_SHELF = 8,
    // 9..17 are 0..8 with the waveshaper
    FILTER_LADDER_START_MARKER = 18,
    FILTER_LADDER_END_MARKER = 25,
};

inline constexpr int NUM_BASE_FILTER_TYPES = 9;

inline constexpr int MAX_FILTER_DEPTH = 4; // sections of a biquad cascade

inline bool is_ladder_filter(FilterType ftype) {
    return ftype >= FILTER_LADDER_START_MARKER && ftype < FILTER_LADDER_END_MARKER;
}

// Whether a gain is one of the type's settings: peaking and shelves.
inline bool has_filter_gain(FilterType ftype) {
    return !is_ladder_filter(ftype) && ftype % NUM_BASE_FILTER_TYPES >= FILTER_PEAKING_EQ;
}

// Whether the number of sections is one of the type's settings.
inline bool has_filter_depth(FilterType ftype) {
    return !is_ladder_filter(ftype) && ftype % NUM_BASE_FILTER_TYPES != FILTER_NONE;
}

// Whether cutoff and resonance change anything: a ladder, or biquads of at least one section.
inline bool has_filter_sections(FilterType ftype, int depth) {
    return is_ladder_filter(ftype) || (has_filter_depth(ftype) && depth > 0);
}

// False when sound passes unchanged: the waveshaper needs no sections.
inline bool is_filter_on(FilterType ftype, int depth) {
    return has_filter_sections(ftype, depth) || ftype >= NUM_BASE_FILTER_TYPES;
}

} // namespace tarquil
