// Vectors of floats whose lanes are independent signals; the only place with compiler vector types.
//
// Every operation acts lane by lane exactly like the scalar one: no lane ever sees another. Kernels
// use NATIVE_LANES at a time (an array of several where one is too little): wider vectors than the
// instruction set's live in memory.  Only kernel sources include this file; everything is in the
// namespace of their instruction set (kernel_functions.h).  columns.h moves signals that lie in
// rows of their own in and out of lanes.

#pragma once

#include <cstdint>

#if defined(__AVX512F__)
#include <immintrin.h>
#endif

namespace tarquil {

#ifndef KERNEL_NAMESPACE
#error "Lanes belong to the kernels, which are compiled once per instruction set"
#endif

// The plain form is for other compilers; the tests hold the kernels to the same bits with it.
#if !defined(__GNUC__) && !defined(TARQUIL_PLAIN_LANES)
#define TARQUIL_PLAIN_LANES
#endif

namespace KERNEL_NAMESPACE {

#if defined(__AVX512F__)
inline constexpr int NATIVE_LANES = 16;
#elif defined(__AVX__)
inline constexpr int NATIVE_LANES = 8;
#else
inline constexpr int NATIVE_LANES = 4;
#endif

// For fewer signals than fill half of a wide vector, which takes longer than a smaller one.
inline constexpr int SMALLER_LANES = NATIVE_LANES > 8 ? NATIVE_LANES / 2 : NATIVE_LANES;

#if !defined(TARQUIL_PLAIN_LANES)

// What a comparison yields: all bits of a lane set or none.
template <int W> struct LaneMask {
    typedef int32_t Vector __attribute__((vector_size(W * sizeof(int32_t))));
    Vector v;
};

template <int W> struct Lanes {
    typedef float Vector __attribute__((vector_size(W * sizeof(float))));
    Vector v;

    // Memory of any alignment.
    static Lanes load(const float* from) {
        Vector loaded;
        __builtin_memcpy(&loaded, from, sizeof loaded);
        return {loaded};
    }
    static Lanes splat(float value) { return {value - Vector{}}; }
    void store(float* to) const { __builtin_memcpy(to, &v, sizeof v); }

    friend Lanes operator+(Lanes a, Lanes b) { return {a.v + b.v}; }
    friend Lanes operator-(Lanes a, Lanes b) { return {a.v - b.v}; }
    friend Lanes operator*(Lanes a, Lanes b) { return {a.v * b.v}; }
    friend Lanes operator/(Lanes a, Lanes b) { return {a.v / b.v}; }
    friend Lanes operator-(Lanes a) { return {-a.v}; }
    friend Lanes operator+(float a, Lanes b) { return {a + b.v}; }
    friend Lanes operator*(Lanes a, float b) { return {a.v * b}; }

    friend LaneMask<W> operator<(Lanes a, Lanes b) { return {a.v < b.v}; }
    friend LaneMask<W> operator<=(Lanes a, Lanes b) { return {a.v <= b.v}; }
    friend LaneMask<W> operator>(Lanes a, Lanes b) { return {a.v > b.v}; }
    friend LaneMask<W> operator>=(Lanes a, Lanes b) { return {a.v >= b.v}; }
    friend LaneMask<W> operator==(Lanes a, Lanes b) { return {a.v == b.v}; }

    // Clears the sign: also of -0 and of values that are not numbers.
    friend Lanes abs(Lanes a) {
        const auto bits = reinterpret_cast<typename LaneMask<W>::Vector>(a.v) & 0x7FFFFFFF;
        return {reinterpret_cast<Vector>(bits)};
    }
    // mask ? a : b
    friend Lanes select(LaneMask<W> mask, Lanes a, Lanes b) { return {mask.v ? a.v : b.v}; }
};

// Lanes 0 and 2, or 1 and 3, of either.
inline Lanes<4> evens(const Lanes<4>& a, const Lanes<4>& b) {
    return {__builtin_shufflevector(a.v, b.v, 0, 2, 4, 6)};
}
inline Lanes<4> odds(const Lanes<4>& a, const Lanes<4>& b) {
    return {__builtin_shufflevector(a.v, b.v, 1, 3, 5, 7)};
}

// Two lanes at either place.
inline Lanes<4> load_halves(const float* first, const float* second) {
    typedef double Halves __attribute__((vector_size(4 * sizeof(float))));
    double lower = 0.0;
    double upper = 0.0;
    __builtin_memcpy(&lower, first, sizeof lower);
    __builtin_memcpy(&upper, second, sizeof upper);
    const Halves halves = {lower, upper};
    return {reinterpret_cast<Lanes<4>::Vector>(halves)};
}
inline void store_lower(const Lanes<4>& lanes, float* to) {
    __builtin_memcpy(to, &lanes.v, 2 * sizeof(float));
}
inline void store_upper(const Lanes<4>& lanes, float* to) {
    __builtin_memcpy(to, reinterpret_cast<const char*>(&lanes.v) + 2 * sizeof(float),
                     2 * sizeof(float));
}
// Lanes 2 and 3, and again.
inline Lanes<4> upper_twice(const Lanes<4>& a) {
    return {__builtin_shufflevector(a.v, a.v, 2, 3, 2, 3)};
}

// Lane j of vector i becomes lane i of vector j.
inline void transpose(Lanes<4> (&rows)[4]) {
    const auto low01 = __builtin_shufflevector(rows[0].v, rows[1].v, 0, 4, 1, 5);
    const auto high01 = __builtin_shufflevector(rows[0].v, rows[1].v, 2, 6, 3, 7);
    const auto low23 = __builtin_shufflevector(rows[2].v, rows[3].v, 0, 4, 1, 5);
    const auto high23 = __builtin_shufflevector(rows[2].v, rows[3].v, 2, 6, 3, 7);
    rows[0].v = __builtin_shufflevector(low01, low23, 0, 1, 4, 5);
    rows[1].v = __builtin_shufflevector(low01, low23, 2, 3, 6, 7);
    rows[2].v = __builtin_shufflevector(high01, high23, 0, 1, 4, 5);
    rows[3].v = __builtin_shufflevector(high01, high23, 2, 3, 6, 7);
}

#else

template <int W> struct LaneMask { bool v[W]; };

template <int W> struct Lanes {
    float v[W];

    static Lanes load(const float* from) {
        return each([&](int i) { return from[i]; });
    }
    static Lanes splat(float value) {
        return each([&](int) { return value; });
    }
    void store(float* to) const {
        for (int i = 0; i < W; i++)
            to[i] = v[i];
    }

    friend Lanes operator+(const Lanes& a, const Lanes& b) {
        return each([&](int i) { return a.v[i] + b.v[i]; });
    }
    friend Lanes operator-(const Lanes& a, const Lanes& b) {
        return each([&](int i) { return a.v[i] - b.v[i]; });
    }
    friend Lanes operator*(const Lanes& a, const Lanes& b) {
        return each([&](int i) { return a.v[i] * b.v[i]; });
    }
    friend Lanes operator/(const Lanes& a, const Lanes& b) {
        return each([&](int i) { return a.v[i] / b.v[i]; });
    }
    friend Lanes operator-(const Lanes& a) {
        return each([&](int i) { return -a.v[i]; });
    }
    friend Lanes operator+(float a, const Lanes& b) {
        return each([&](int i) { return a + b.v[i]; });
    }
    friend Lanes operator*(const Lanes& a, float b) {
        return each([&](int i) { return a.v[i] * b; });
    }

    friend LaneMask<W> operator<(const Lanes& a, const Lanes& b) {
        return test([&](int i) { return a.v[i] < b.v[i]; });
    }
    friend LaneMask<W> operator<=(const Lanes& a, const Lanes& b) {
        return test([&](int i) { return a.v[i] <= b.v[i]; });
    }
    friend LaneMask<W> operator>(const Lanes& a, const Lanes& b) {
        return test([&](int i) { return a.v[i] > b.v[i]; });
    }
    friend LaneMask<W> operator>=(const Lanes& a, const Lanes& b) {
        return test([&](int i) { return a.v[i] >= b.v[i]; });
    }
    friend LaneMask<W> operator==(const Lanes& a, const Lanes& b) {
        return test([&](int i) { return a.v[i] == b.v[i]; });
    }

    friend Lanes abs(const Lanes& a) {
        return each([&](int i) { return __builtin_fabsf(a.v[i]); });
    }
    friend Lanes select(const LaneMask<W>& mask, const Lanes& a, const Lanes& b) {
        return each([&](int i) { return mask.v[i] ? a.v[i] : b.v[i]; });
    }

  private:
    template <typename Value> static Lanes each(const Value& value) {
        Lanes lanes = {};
        for (int i = 0; i < W; i++)
            lanes.v[i] = value(i);
        return lanes;
    }
    template <typename Value> static LaneMask<W> test(const Value& value) {
        LaneMask<W> mask = {};
        for (int i = 0; i < W; i++)
            mask.v[i] = value(i);
        return mask;
    }
};

inline Lanes<4> evens(const Lanes<4>& a, const Lanes<4>& b) {
    return {{a.v[0], a.v[2], b.v[0], b.v[2]}};
}
inline Lanes<4> odds(const Lanes<4>& a, const Lanes<4>& b) {
    return {{a.v[1], a.v[3], b.v[1], b.v[3]}};
}
inline Lanes<4> load_halves(const float* first, const float* second) {
    return {{first[0], first[1], second[0], second[1]}};
}
inline void store_lower(const Lanes<4>& lanes, float* to) {
    for (int i = 0; i < 2; i++)
        to[i] = lanes.v[i];
}
inline void store_upper(const Lanes<4>& lanes, float* to) {
    for (int i = 0; i < 2; i++)
        to[i] = lanes.v[2 + i];
}
inline Lanes<4> upper_twice(const Lanes<4>& a) {
    return {{a.v[2], a.v[3], a.v[2], a.v[3]}};
}
inline void transpose(Lanes<4> (&rows)[4]) {
    for (int i = 0; i < 4; i++) {
        for (int j = 0; j < i; j++) {
            const float upper = rows[j].v[i];
            rows[j].v[i] = rows[i].v[j];
            rows[i].v[j] = upper;
        }
    }
}

#endif

inline void store_halves(const Lanes<4>& lanes, float* first, float* second) {
    store_lower(lanes, first);
    store_upper(lanes, second);
}

// The first four lanes; a vector with others in their place; the last four before the others.
#if defined(__AVX512F__) && !defined(TARQUIL_PLAIN_LANES)
inline Lanes<4> first(const Lanes<16>& a) {
    return {__builtin_shufflevector(a.v, a.v, 0, 1, 2, 3)};
}
inline Lanes<16> with_first(const Lanes<16>& a, const Lanes<4>& lanes) {
    return {_mm512_mask_broadcast_f32x4(a.v, 0xF, lanes.v)};
}
inline Lanes<16> rotated(const Lanes<16>& a) {
    return {
        __builtin_shufflevector(a.v, a.v, 12, 13, 14, 15, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11)};
}
#else
template <int W> inline Lanes<4> first(const Lanes<W>& a) {
    Lanes<4> lanes = {};
    for (int i = 0; i < 4; i++)
        lanes.v[i] = a.v[i];
    return lanes;
}
template <int W> inline Lanes<W> with_first(Lanes<W> a, const Lanes<4>& lanes) {
    for (int i = 0; i < 4; i++)
        a.v[i] = lanes.v[i];
    return a;
}
template <int W> inline Lanes<W> rotated(const Lanes<W>& a) {
    Lanes<W> lanes = {};
    for (int i = 0; i < W; i++)
        lanes.v[i] = a.v[(i + W - 4) % W];
    return lanes;
}
#endif

// std::max and std::min, lane by lane: the first where neither is larger.
template <int W> inline Lanes<W> max(const Lanes<W>& a, const Lanes<W>& b) {
    return select(a < b, b, a);
}
template <int W> inline Lanes<W> min(const Lanes<W>& a, const Lanes<W>& b) {
    return select(b < a, b, a);
}

template <int W> inline Lanes<W>& operator+=(Lanes<W>& a, const Lanes<W>& b) {
    return a = a + b;
}
template <int W> inline Lanes<W>& operator-=(Lanes<W>& a, const Lanes<W>& b) {
    return a = a - b;
}
template <int W> inline Lanes<W>& operator*=(Lanes<W>& a, const Lanes<W>& b) {
    return a = a * b;
}

// Calls step.operator()<W>(i) for the W samples from i on, for all of 0..count - 1 in order; W is
// NATIVE_LANES, at the end 1.
template <typename Step> inline void for_each_lanes(uint32_t count, const Step& step) {
    uint32_t i = 0;
    for (; count - i >= NATIVE_LANES; i += NATIVE_LANES)
        step.template operator()<NATIVE_LANES>(i);
    for (; i < count; i++)
        step.template operator()<1>(i);
}

} // namespace KERNEL_NAMESPACE

} // namespace tarquil
