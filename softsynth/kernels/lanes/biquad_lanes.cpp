// Biquad cascades in lanes, all sections in one loop.
//
// A section waits for its own last output; the next section's work on the sample before, and other
// vectors when the cascade is short, fill that time.

#include "softsynth/kernels/biquad_lanes.h"

#include "softsynth/kernels/kernel_functions.h"
#include "softsynth/kernels/lanes/columns.h"

namespace tarquil {

namespace KERNEL_NAMESPACE {
namespace {

// Sections that together fill the arithmetic units.
constexpr int ENOUGH_SECTIONS = 4;

template <typename Value, int D> struct Cascade {
    Value b0;
    Value b1;
    Value b2;
    Value a1;
    Value a2;
    Value z1[D];
    Value z2[D];

    Value run(Value x) {
        for (int k = 0; k < D; k++) {
            const Value y = b0 * x + z1[k];
            z1[k] = b1 * x - a1 * y + z2[k];
            z2[k] = b2 * x - a2 * y;
            x = y;
        }
        return x;
    }
};

// One vector's rows, the last of which are repeated to fill it.
template <int W> struct Rows {
    float* signal[W];
    float* memory[W];
    const float* coefficients[W];

    void find(const BiquadLanes& lanes, uint32_t first_lane, uint32_t first_sample) {
        for (uint32_t i = 0; i < uint32_t(W); i++) {
            const uint32_t lane = first_lane + i < lanes.count ? first_lane + i : lanes.count - 1;
            signal[i] = lanes.signal[lane] + first_sample;
            memory[i] = &lanes.memory[lane]->z1;
            coefficients[i] = &lanes.coefficients[lane]->b0;
        }
    }
};

template <int W, int D> void load(const Rows<W>& rows, Cascade<Lanes<W>, D>& cascade) {
    Lanes<W> columns[COLUMNS];
    load_columns(rows.coefficients, 0, columns);
    cascade.b0 = columns[0];
    cascade.b1 = columns[1];
    cascade.b2 = columns[2];
    cascade.a1 = columns[3];
    load_columns(rows.coefficients, COLUMNS, columns);
    cascade.a2 = columns[0];
    for (int k = 0; k < D; k++) {
        if (k % 2 == 0) // columns hold z1 and z2 of two sections
            load_columns(rows.memory, uint32_t(2 * k), columns);
        cascade.z1[k] = columns[k % 2 * 2];
        cascade.z2[k] = columns[k % 2 * 2 + 1];
    }
}

template <int W, int D> void store(const Cascade<Lanes<W>, D>& cascade, const Rows<W>& rows) {
    for (int k = 0; k < D; k += 2) {
        Lanes<W> columns[COLUMNS] = {cascade.z1[k], cascade.z2[k], Lanes<W>::splat(0.0F),
                                     Lanes<W>::splat(0.0F)};
        if (k + 1 < D) {
            columns[2] = cascade.z1[k + 1];
            columns[3] = cascade.z2[k + 1];
        }
        store_columns(columns, rows.memory, uint32_t(2 * k));
    }
}

// V vectors from `lane` on; length is a multiple of COLUMNS.
template <int W, int D, int V>
void run(const BiquadLanes& lanes, uint32_t lane, uint32_t first, uint32_t length) {
    Rows<W> rows[V];
    Cascade<Lanes<W>, D> cascades[V];
    for (int v = 0; v < V; v++) {
        rows[v].find(lanes, lane + uint32_t(v * W), first);
        load(rows[v], cascades[v]);
    }
    for (uint32_t i = 0; i < length; i += COLUMNS) {
        Lanes<W> samples[V][COLUMNS];
        for (int v = 0; v < V; v++)
            load_columns(rows[v].signal, i, samples[v]);
        for (uint32_t j = 0; j < COLUMNS; j++) {
            for (int v = 0; v < V; v++)
                samples[v][j] = cascades[v].run(samples[v][j]);
        }
        for (int v = 0; v < V; v++)
            store_columns(samples[v], rows[v].signal, i);
    }
    for (int v = 0; v < V; v++)
        store(cascades[v], rows[v]);
}

// All vectors from `lane` on, V at a time while there are as many.
template <int W, int D, int V>
void run_all(const BiquadLanes& lanes, uint32_t lane, uint32_t first, uint32_t length) {
    for (; lane + uint32_t((V - 1) * W) < lanes.count; lane += uint32_t(V * W))
        run<W, D, V>(lanes, lane, first, length);
    if constexpr (V > 1)
        run_all<W, D, V / 2>(lanes, lane, first, length);
}

template <int D> void run_depth(const BiquadLanes& lanes, uint32_t first, uint32_t length) {
    constexpr int V = ENOUGH_SECTIONS / D;
    const uint32_t whole = lanes.count == 1 ? 0 : length - length % COLUMNS;
    if (whole > 0) {
        if (lanes.count <= uint32_t(SMALLER_LANES))
            run_all<SMALLER_LANES, D, V>(lanes, 0, first, whole);
        else
            run_all<NATIVE_LANES, D, V>(lanes, 0, first, whole);
    }
    if (whole < length) {
        for (uint32_t lane = 0; lane < lanes.count; lane++)
            biquad_series(equal_sections(*lanes.coefficients[lane], lanes.memory[lane], D),
                          lanes.signal[lane] + first + whole, length - whole);
    }
}

} // namespace

void biquad_lanes(const BiquadLanes& lanes, uint32_t first, uint32_t length) {
    using Run = void (*)(const BiquadLanes&, uint32_t, uint32_t);
    constexpr Run RUN[] = {run_depth<1>, run_depth<2>, run_depth<3>, run_depth<4>};
    static_assert(sizeof(RUN) / sizeof(Run) == BiquadLanes::MAX_DEPTH);
    RUN[lanes.depth - 1](lanes, first, length);
}

} // namespace KERNEL_NAMESPACE

} // namespace tarquil
