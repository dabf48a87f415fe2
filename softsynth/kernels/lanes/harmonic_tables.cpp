// Wavetables with each sine made once for all tables: a chunk of samples of all harmonics at a
// time, then the sums of each table's chunk in registers.

#include "softsynth/kernels/harmonic_tables.h"

#include "softsynth/kernels/kernel_functions.h"
#include "softsynth/kernels/lanes/lanes.h"

namespace tarquil {

namespace KERNEL_NAMESPACE {
namespace {

using Native = Lanes<NATIVE_LANES>;

constexpr uint32_t CHUNK = HarmonicTables::CHUNK;
constexpr uint32_t VECTORS = CHUNK / NATIVE_LANES;

// Tables that share the loading of a sine; as many sums as hide the latency of an addition.
constexpr uint32_t GROUP = 8 / VECTORS;

void make_sines(HarmonicPhasors& p, float* sines) {
    auto sine = Lanes<4>::load(p.sine);
    auto cosine = Lanes<4>::load(p.cosine);
    const auto turn_sine = Lanes<4>::splat(p.turn_sine);
    const auto turn_cosine = Lanes<4>::splat(p.turn_cosine);
    for (uint32_t i = 0; i < CHUNK; i += 4) {
        sine.store(sines + i);
        const auto turned = sine * turn_cosine + cosine * turn_sine;
        cosine = cosine * turn_cosine - sine * turn_sine;
        sine = turned;
    }
    sine.store(p.sine);
    cosine.store(p.cosine);
}

// Adds harmonics from `first` up to `end` to the sums of N tables from the k-th on.
template <uint32_t N>
void add_harmonics(const HarmonicTables& tables, uint32_t k, uint32_t first, uint32_t end,
                   Native (*sums)[VECTORS]) {
    const float* amplitudes = tables.amplitudes + size_t(k) * tables.max_harmonics;
    for (uint32_t j = first; j < end; j++) {
        const float* sines = tables.scratch + size_t(j) * CHUNK;
        Native sine[VECTORS];
        for (uint32_t v = 0; v < VECTORS; v++)
            sine[v] = Native::load(sines + v * NATIVE_LANES);
        for (uint32_t t = 0; t < N; t++) {
            const auto amplitude = Native::splat(amplitudes[t * tables.max_harmonics + j]);
            for (uint32_t v = 0; v < VECTORS; v++)
                sums[t][v] += amplitude * sine[v];
        }
    }
}

// The chunk from sample `start` on of N tables from the k-th on.
template <uint32_t N> void sum_chunk(const HarmonicTables& tables, uint32_t k, uint32_t start) {
    Native sums[N][VECTORS];
    for (uint32_t t = 0; t < N; t++) {
        for (uint32_t v = 0; v < VECTORS; v++)
            sums[t][v] = Native::splat(0.0F);
    }
    const uint32_t common = tables.num_harmonics[k];
    add_harmonics<N>(tables, k, 0, common, sums);
    for (uint32_t t = 0; t < N; t++) {
        add_harmonics<1>(tables, k + t, common, tables.num_harmonics[k + t], sums + t);
        for (uint32_t v = 0; v < VECTORS; v++)
            sums[t][v].store(tables.samples + (k + t) * tables.stride + start + v * NATIVE_LANES);
    }
}

} // namespace

void harmonic_tables(const HarmonicTables& tables) {
    for (uint32_t start = 0; start < tables.size; start += CHUNK) {
        for (uint32_t j = 0; j < tables.max_harmonics; j++)
            make_sines(tables.phasors[j], tables.scratch + size_t(j) * CHUNK);
        uint32_t k = 0;
        for (; tables.num_tables - k >= GROUP; k += GROUP)
            sum_chunk<GROUP>(tables, k, start);
        for (; k < tables.num_tables; k++)
            sum_chunk<1>(tables, k, start);
    }
}

} // namespace KERNEL_NAMESPACE

} // namespace tarquil
