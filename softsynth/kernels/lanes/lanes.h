// Vectors of floats whose lanes are independent signals; the only place with compiler vector types.
//
// Every operation acts lane by lane exactly like the scalar one: no lane ever sees another but in
// transpose.  Kernels use NATIVE_LANES at a time (an array of several where one is too little):
// wider vectors than the instruction set's live in memory.  Only kernel sources include this file;
// everything is in the namespace of their instruction set (kernel_functions.h).

#pragma once

#include <cstdint>

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
        Lanes lanes;
        __builtin_memcpy(&lanes.v, from, sizeof lanes.v);
        return lanes;
    }
    static Lanes splat(float value) { return {value - Vector{}}; }
    void store(float* to) const { __builtin_memcpy(to, &v, sizeof v); }

    friend Lanes operator+(Lanes a, Lanes b) { return {a.v + b.v}; }
    friend Lanes operator-(Lanes a, Lanes b) { return {a.v - b.v}; }
    friend Lanes operator*(Lanes a, Lanes b) { return {a.v * b.v}; }
    friend Lanes operator/(Lanes a, Lanes b) { return {a.v / b.v}; }
    friend Lanes operator-(Lanes a) { return {-a.v}; }

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
        Lanes lanes;
        for (int i = 0; i < W; i++)
            lanes.v[i] = value(i);
        return lanes;
    }
    template <typename Value> static LaneMask<W> test(const Value& value) {
        LaneMask<W> mask;
        for (int i = 0; i < W; i++)
            mask.v[i] = value(i);
        return mask;
    }
};

#endif

template <int W> inline Lanes<W>& operator+=(Lanes<W>& a, const Lanes<W>& b) {
    return a = a + b;
}
template <int W> inline Lanes<W>& operator-=(Lanes<W>& a, const Lanes<W>& b) {
    return a = a - b;
}
template <int W> inline Lanes<W>& operator*=(Lanes<W>& a, const Lanes<W>& b) {
    return a = a * b;
}

} // namespace KERNEL_NAMESPACE
