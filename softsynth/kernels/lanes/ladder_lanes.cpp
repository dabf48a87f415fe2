// Ladder filters in lanes, several vectors stage by stage.
//
// A lone ladder waits for its own saturations, one behind the other, so that vectors of other
// ladders are free until they fill the adders.

#include "softsynth/kernels/ladder_lanes.h"

#include "softsynth/kernels/half_band_sums.h"
#include "softsynth/kernels/kernel_functions.h"
#include "softsynth/kernels/ladder_step.h"
#include "softsynth/kernels/lanes/columns.h"

namespace tarquil {

namespace KERNEL_NAMESPACE {

// For ladder_step, which looks for it beside Lanes.
template <int W> inline Lanes<W> abs_value(Lanes<W> x) {
    return abs(x);
}

namespace {

constexpr uint32_t OVERSAMPLING = LadderLanes::OVERSAMPLING;
constexpr uint32_t PIECE = LadderLanes::PIECE;
constexpr uint32_t HISTORY = ResampleHistory::SIZE;

// Where the decimators' rows lie in a memory, in floats.
constexpr uint32_t ROW_88KHZ = offsetof(LadderMemory, decimate_88khz) / sizeof(float);
constexpr uint32_t ROW_176KHZ = offsetof(LadderMemory, decimate_176khz) / sizeof(float);

// One vector's rows of the scratch: the histories are followed by what is new.
template <int W> struct Scratch {
    using Vector = Lanes<W>;
    Vector at_176khz[HISTORY + OVERSAMPLING * PIECE];
    Vector at_88khz[HISTORY + 2 * PIECE];
    Vector at_44khz[PIECE]; // input, then output
};
static_assert(sizeof(Scratch<4>) == LadderLanes::SCRATCH_PER_LANE * 4 * sizeof(float));

// One vector's rows outside, the last of which are repeated to fill it.
template <int W> struct Rows {
    float* signal[W];
    float* memory[W];
    const float* coefficients[W];

    void find(const LadderLanes& lanes, uint32_t first_lane, uint32_t first_sample) {
        for (uint32_t i = 0; i < uint32_t(W); i++) {
            const uint32_t lane = first_lane + i < lanes.count ? first_lane + i : lanes.count - 1;
            signal[i] = lanes.signal[lane] + first_sample;
            memory[i] = reinterpret_cast<float*>(lanes.memory[lane]);
            coefficients[i] = reinterpret_cast<const float*>(lanes.coefficients[lane]);
        }
    }
};

template <int W, int V>
void load(const Rows<W>& rows, int v, LadderSettings<Lanes<W>, V>& settings) {
    Lanes<W> columns[COLUMNS];
    load_columns(rows.coefficients, 0, columns);
    settings.k[v] = columns[0];
    settings.gain[v] = columns[1];
    settings.g[v] = columns[2];
    settings.c[0][v] = columns[3];
    load_columns(rows.coefficients, COLUMNS, columns);
    for (int i = 0; i < 4; i++)
        settings.c[1 + i][v] = columns[i];
}

template <int W, int V> void load(const Rows<W>& rows, int v, LadderStages<Lanes<W>, V>& stages) {
    Lanes<W> columns[COLUMNS];
    load_columns(rows.memory, 0, columns);
    for (int i = 0; i < 4; i++)
        stages.y[i][v] = columns[i];
    load_columns(rows.memory, COLUMNS, columns);
    for (int i = 0; i < 4; i++)
        stages.t[i][v] = columns[i];
    load_columns(rows.memory, 2 * COLUMNS, columns);
    stages.y4_prev[v] = columns[0];
    stages.feedback[v] = columns[1];
}

template <int W, int V>
void store(const LadderStages<Lanes<W>, V>& stages, int v, const Rows<W>& rows) {
    Lanes<W> columns[COLUMNS];
    for (int i = 0; i < 4; i++)
        columns[i] = stages.y[i][v];
    store_columns(columns, rows.memory, 0);
    for (int i = 0; i < 4; i++)
        columns[i] = stages.t[i][v];
    store_columns(columns, rows.memory, COLUMNS);
    columns[0] = stages.y4_prev[v];
    columns[1] = stages.feedback[v];
    columns[2] = columns[3] = Lanes<W>::splat(0.0F);
    store_columns(columns, rows.memory, 2 * COLUMNS);
}

// Moves `count` columns between rows and vectors, the last ones one by one.
template <int W>
void load_row(const float* const* rows, uint32_t at, Lanes<W>* to, uint32_t count) {
    uint32_t t = 0;
    for (; t + COLUMNS <= count; t += COLUMNS)
        load_columns(rows, at + t, reinterpret_cast<Lanes<W>(&)[COLUMNS]>(to[t]));
    for (; t < count; t++) {
        float column[W];
        for (int i = 0; i < W; i++)
            column[i] = rows[i][at + t];
        to[t] = Lanes<W>::load(column);
    }
}
template <int W>
void store_row(const Lanes<W>* from, float* const* rows, uint32_t at, uint32_t count) {
    uint32_t t = 0;
    for (; t + COLUMNS <= count; t += COLUMNS)
        store_columns(reinterpret_cast<const Lanes<W>(&)[COLUMNS]>(from[t]), rows, at + t);
    for (; t < count; t++) {
        float column[W];
        from[t].store(column);
        for (int i = 0; i < W; i++)
            rows[i][at + t] = column[i];
    }
}

// Halves the rate of the 2n vectors behind the history, and moves the history on.
template <int W> void decimate(Lanes<W>* in, Lanes<W>* out, uint32_t n) {
    half_band_sums(in + HISTORY + 1, alt_resample_kernel, out, int(n));
    for (uint32_t i = 0; i < HISTORY; i++)
        in[i] = in[2 * n + i];
}

template <int W, int V>
void run(const LadderLanes& lanes, uint32_t first_lane, uint32_t first, uint32_t length) {
    using Vector = Lanes<W>;
    Rows<W> rows[V];
    auto* scratch = reinterpret_cast<Scratch<W>*>(lanes.scratch);
    LadderSettings<Vector, V> settings = {};
    LadderStages<Vector, V> stages = {};
    for (int v = 0; v < V; v++) {
        rows[v].find(lanes, first_lane + uint32_t(v * W), first);
        load(rows[v], v, settings);
        load(rows[v], v, stages);
        load_row(rows[v].memory, ROW_88KHZ, scratch[v].at_88khz, HISTORY);
        load_row(rows[v].memory, ROW_176KHZ, scratch[v].at_176khz, HISTORY);
    }
    for (uint32_t done = 0; done < length; done += PIECE) {
        const uint32_t n = length - done < PIECE ? length - done : PIECE;
        for (int v = 0; v < V; v++)
            load_row(rows[v].signal, done, scratch[v].at_44khz, n);
        for (uint32_t i = 0; i < n; i++) {
            Vector x[V];
            for (int v = 0; v < V; v++)
                x[v] = scratch[v].at_44khz[i];
            for (uint32_t step = 0; step < OVERSAMPLING; step++) {
                Vector out[V];
                ladder_step(stages, settings, x, out);
                for (int v = 0; v < V; v++)
                    scratch[v].at_176khz[HISTORY + OVERSAMPLING * i + step] = out[v];
            }
        }
        for (int v = 0; v < V; v++) {
            decimate(scratch[v].at_176khz, scratch[v].at_88khz + HISTORY, 2 * n);
            decimate(scratch[v].at_88khz, scratch[v].at_44khz, n);
            store_row(scratch[v].at_44khz, rows[v].signal, done, n);
        }
    }
    for (int v = 0; v < V; v++) {
        store(stages, v, rows[v]);
        store_row(scratch[v].at_88khz, rows[v].memory, ROW_88KHZ, HISTORY);
        store_row(scratch[v].at_176khz, rows[v].memory, ROW_176KHZ, HISTORY);
    }
}

// As many vectors at a time as there may be, shared out evenly.
template <int W> void run_all(const LadderLanes& lanes, uint32_t first, uint32_t length) {
    using Run = void (*)(const LadderLanes&, uint32_t, uint32_t, uint32_t);
    constexpr Run RUN[] = {run<W, 1>, run<W, 2>, run<W, 3>, run<W, 4>, run<W, 5>, run<W, 6>};
    constexpr uint32_t MOST = LadderLanes::MAX_VECTORS;
    static_assert(sizeof(RUN) / sizeof(Run) == MOST);
    const uint32_t vectors = (lanes.count + uint32_t(W) - 1) / uint32_t(W);
    const uint32_t turns = (vectors + MOST - 1) / MOST;
    uint32_t lane = 0;
    for (uint32_t turn = 0; turn < turns; turn++) {
        const uint32_t share = (vectors + turn) / turns;
        RUN[share - 1](lanes, lane, first, length);
        lane += share * uint32_t(W);
    }
}

} // namespace

void ladder_lanes(const LadderLanes& lanes, uint32_t first, uint32_t length) {
    if (lanes.count <= uint32_t(SMALLER_LANES))
        run_all<SMALLER_LANES>(lanes, first, length);
    else
        run_all<NATIVE_LANES>(lanes, first, length);
}

} // namespace KERNEL_NAMESPACE

} // namespace tarquil
