// Wavetables, table by table and harmonic by harmonic.

#include "softsynth/kernels/kernel_functions.h"

namespace tarquil {

namespace {

void add_harmonic(float* table, uint32_t size, HarmonicPhasors p, float amplitude) {
    for (uint32_t i = 0; i < size; i += 4) {
        for (uint32_t k = 0; k < 4; k++) {
            table[i + k] += amplitude * p.sine[k];
            const float turned = p.sine[k] * p.turn_cosine + p.cosine[k] * p.turn_sine;
            p.cosine[k] = p.cosine[k] * p.turn_cosine - p.sine[k] * p.turn_sine;
            p.sine[k] = turned;
        }
    }
}

} // namespace

void KERNEL_NAMESPACE::harmonic_tables(const HarmonicTables& tables) {
    for (uint32_t k = 0; k < tables.num_tables; k++) {
        float* table = tables.samples + k * tables.stride;
        for (uint32_t i = 0; i < tables.size; i++)
            table[i] = 0.0F;
        for (uint32_t j = 0; j < tables.num_harmonics[k]; j++)
            add_harmonic(table, tables.size, tables.phasors[j],
                         tables.amplitudes[size_t(k) * tables.max_harmonics + j]);
    }
}

} // namespace tarquil
