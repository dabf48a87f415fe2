// Signals in rows of their own, read and written as lanes: lane i of column t is sample t of row i.
//
// Four columns at a time: each vector takes four samples of every fourth row, and blocks of 4 x 4
// are transposed within the vectors, which needs no shuffle across 128 bits.

#pragma once

#if defined(__AVX__)
#include <immintrin.h>
#endif

#include "softsynth/kernels/lanes/lanes.h"

namespace tarquil {

namespace KERNEL_NAMESPACE {

// Columns that are moved at a time.
inline constexpr uint32_t COLUMNS = 4;

#if !defined(TARQUIL_PLAIN_LANES)

using Quad = Lanes<4>;

template <int... I> struct Places {};
// Places<0, 1 .. N - 1> as All.
template <int N, int... I> struct Count : Count<N - 1, N - 1, I...> {};
template <int... I> struct Count<0, I...> { using All = Places<I...>; };

// Two vectors as one, and four lanes of one.  By their instructions where there are some: compilers
// shuffle instead.
template <int W, int... I>
inline Lanes<2 * W> join(const Lanes<W>& a, const Lanes<W>& b, Places<I...> /*all*/) {
#if defined(__AVX512F__) && defined(__AVX512DQ__)
    if constexpr (W == 8)
        return {_mm512_insertf32x8(_mm512_castps256_ps512(a.v), b.v, 1)};
#endif
#if defined(__AVX__)
    if constexpr (W == 4)
        return {_mm256_insertf128_ps(_mm256_castps128_ps256(a.v), b.v, 1)};
#endif
    return {__builtin_shufflevector(a.v, b.v, I...)};
}

template <int FIRST, int W, int... I> inline Quad part(const Lanes<W>& a, Places<I...> /*all*/) {
#if defined(__AVX512F__)
    if constexpr (W == 16)
        // All elements by a mask: the form without one draws a false alarm from GCC 12.
        return {_mm512_maskz_extractf32x4_ps(0xF, a.v, FIRST / 4)};
#endif
    return {__builtin_shufflevector(a.v, a.v, (FIRST + I)...)};
}

// Within each four lanes: a0 b0 a1 b1, or a2 b2 a3 b3 with HALF 2.
template <int HALF, int W, int... I>
inline Lanes<W> interleave(const Lanes<W>& a, const Lanes<W>& b, Places<I...> /*all*/) {
    return {__builtin_shufflevector(a.v, b.v, ((I & ~3) + (I >> 1 & 1) + HALF + (I & 1) * W)...)};
}

// Four samples from `at` on of rows 0, 4, 8 ...
template <int W> inline Lanes<W> load_quads(const float* const* rows, uint32_t at) {
    if constexpr (W == 4)
        return Quad::load(rows[0] + at);
    else
        return join(load_quads<W / 2>(rows, at), load_quads<W / 2>(rows + W / 2, at),
                    typename Count<W>::All());
}

template <int FIRST, int W>
inline void store_quads(const Lanes<W>& quads, float* const* rows, uint32_t at) {
    part<FIRST>(quads, typename Count<4>::All()).store(rows[FIRST] + at);
    if constexpr (FIRST + 4 < W)
        store_quads<FIRST + 4>(quads, rows, at);
}

template <int W> inline void transpose_blocks(Lanes<W> (&rows)[COLUMNS]) {
    constexpr typename Count<W>::All ALL;
    const Lanes<W> even_low = interleave<0>(rows[0], rows[2], ALL);
    const Lanes<W> even_high = interleave<2>(rows[0], rows[2], ALL);
    const Lanes<W> odd_low = interleave<0>(rows[1], rows[3], ALL);
    const Lanes<W> odd_high = interleave<2>(rows[1], rows[3], ALL);
    rows[0] = interleave<0>(even_low, odd_low, ALL);
    rows[1] = interleave<2>(even_low, odd_low, ALL);
    rows[2] = interleave<0>(even_high, odd_high, ALL);
    rows[3] = interleave<2>(even_high, odd_high, ALL);
}

// Samples at .. at + 3 of W rows.
template <int W>
inline void load_columns(const float* const* rows, uint32_t at, Lanes<W> (&columns)[COLUMNS]) {
    for (uint32_t j = 0; j < COLUMNS; j++)
        columns[j] = load_quads<W>(rows + j, at);
    transpose_blocks(columns);
}

template <int W>
inline void store_columns(const Lanes<W> (&columns)[COLUMNS], float* const* rows, uint32_t at) {
    Lanes<W> quads[COLUMNS];
    for (uint32_t j = 0; j < COLUMNS; j++)
        quads[j] = columns[j];
    transpose_blocks(quads);
    for (uint32_t j = 0; j < COLUMNS; j++)
        store_quads<0>(quads[j], rows + j, at);
}

#else

template <int W>
inline void load_columns(const float* const* rows, uint32_t at, Lanes<W> (&columns)[COLUMNS]) {
    for (uint32_t j = 0; j < COLUMNS; j++) {
        for (int i = 0; i < W; i++)
            columns[j].v[i] = rows[i][at + j];
    }
}

template <int W>
inline void store_columns(const Lanes<W> (&columns)[COLUMNS], float* const* rows, uint32_t at) {
    for (uint32_t j = 0; j < COLUMNS; j++) {
        for (int i = 0; i < W; i++)
            rows[i][at + j] = columns[j].v[i];
    }
}

#endif

} // namespace KERNEL_NAMESPACE

} // namespace tarquil
