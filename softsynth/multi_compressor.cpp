// The master bus's four-band compressor.

#include "softsynth/multi_compressor.h"

#include "common/assertion.h"

namespace {

constexpr int SPLIT_STAGES = 4;
constexpr float SPLIT_RESONANCE = 0.25F;

} // namespace

void MultiCompressor::reset() {
    for (StereoCompressor& compressor : compressors)
        compressor.reset();
    for (SplittingStereoFilter& split : splits)
        split.init(SPLIT_STAGES);
}

void MultiCompressor::process(StereoBuffer& buf, const float* crossover_hz, const float* threshold,
                              const float* ratio, const float* attack_seconds,
                              const float* release_seconds, const float* makeup_gain) {
    static StereoBuffer sum;
    static StereoBuffer low;
    const uint32_t frames = buf.get_buf_size();
    sum.init(frames);
    low.init(frames);
    sum.nullify();
    for (unsigned b = 0; b < MC_N_BANDS - 1; b++) {
        Buffer::copy(buf, low);
        splits[b].render(low.get_first_left_sample_ptr(), buf.get_first_left_sample_ptr(), frames,
                         crossover_hz[b] * RADIANS_PER_HZ, SPLIT_RESONANCE);
        compressors[b].process(low, threshold[b], ratio[b], attack_seconds[b], release_seconds[b],
                               makeup_gain[b]);
        sum += low;
    }
    constexpr unsigned TOP = MC_N_BANDS - 1;
    compressors[TOP].process(buf, threshold[TOP], ratio[TOP], attack_seconds[TOP],
                             release_seconds[TOP], makeup_gain[TOP]);
    buf += sum;
}

float MultiCompressor::get_attenuation(unsigned band) const {
    TARQ_ASSERT(band < MC_N_BANDS);
    return compressors[band].get_attenuation();
}
