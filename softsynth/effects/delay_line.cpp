// One stereo side's circular delay memory with feedback.

#include "softsynth/effects/delay_line.h"

#include <algorithm>

#include "common/assertion.h"
#include "softsynth/signal/finite.h"

namespace tarquil {

namespace {

constexpr int32_t POSITION_MASK = MAX_DELAY_LENGTH - 1;

} // namespace

void DelayLine::reset() {
    std::fill_n(buffer, MAX_DELAY_LENGTH, 0.0F);
    circbuf_pos = 0;
    num_zeros = MAX_DELAY_LENGTH;
}

void DelayLine::render_no_lfo(const StereoBuffer& inbuf, StereoBuffer& outbuf, float delay_samples,
                              float feedback, float wet, channel ch) {
    TARQ_ASSERT(inbuf.get_buf_size() == outbuf.get_buf_size());
    const float* inptr = inbuf.get_first_left_sample_ptr() + ch;
    float* outptr = outbuf.get_first_left_sample_ptr() + ch;
    const uint32_t size = inbuf.get_buf_size();
    if (num_zeros >= MAX_DELAY_LENGTH && all_zero(inbuf.get_first_left_sample_ptr(), 2 * size)) {
        // Silence into an empty line stays silence; that it adds 0 turns -0 into 0.
        for (uint32_t i = 0; i < size; i++)
            outptr[size_t(2) * i] += wet * 0.0F;
        return;
    }
    const auto d = int32_t(delay_samples);
    int32_t pos = circbuf_pos;
    for (uint32_t i = 0; i < size; i++, inptr += 2, outptr += 2) {
        const float y = buffer[(pos - d) & POSITION_MASK];
        const float x = *inptr; // before the output, which may be the same buffer
        *outptr += wet * y;
        buffer[pos] = feedback * y + x;
        pos = (pos + 1) & POSITION_MASK;
    }
    circbuf_pos = pos;
    look_at_written(size);
}

void DelayLine::render_with_lfo(const StereoBuffer& inbuf, StereoBuffer& outbuf,
                                const MonoBuffer& delay, float feedback, float wet, channel ch) {
    TARQ_ASSERT(inbuf.get_buf_size() == delay.get_buf_size());
    TARQ_ASSERT(outbuf.get_buf_size() == delay.get_buf_size());
    TARQ_ASSERT(circbuf_pos >= 0 && circbuf_pos < MAX_DELAY_LENGTH);
    const float* inptr = inbuf.get_first_left_sample_ptr() + ch;
    float* outptr = outbuf.get_first_left_sample_ptr() + ch;
    const float* delayptr = delay.get_first_sample_ptr();
    const uint32_t size = delay.get_buf_size();
    int32_t pos = circbuf_pos;
    for (uint32_t i = 0; i < size; i++, inptr += 2, outptr += 2, delayptr++) {
        const float d = *delayptr;
        TARQ_ASSERT(d >= 0.0f);
        const auto d1 = int32_t(d);
        // clang-format off
        TARQ_ASSERT(d1 > 0 && d1 < (MAX_DELAY_LENGTH-2));
        // clang-format on
        const float t = d - float(d1);
        const float y = cubic_interpolate(
            buffer[(pos - (d1 - 1)) & POSITION_MASK], buffer[(pos - d1) & POSITION_MASK],
            buffer[(pos - (d1 + 1)) & POSITION_MASK], buffer[(pos - (d1 + 2)) & POSITION_MASK], t);
        buffer[pos] = y * feedback + *inptr;
        *outptr += y * wet;
        pos = (pos + 1) & POSITION_MASK;
    }
    circbuf_pos = pos;
    look_at_written(size);
}

void DelayLine::look_at_written(uint32_t count) {
    const auto end = uint32_t(circbuf_pos);
    const uint32_t before_wrap = std::min(count, end);
    const uint32_t after_wrap = count - before_wrap;
    const float* last = buffer + (end - before_wrap);
    const float* wrapped = buffer + (MAX_DELAY_LENGTH - after_wrap);
    if (!all_finite(last, before_wrap) || !all_finite(wrapped, after_wrap))
        reset();
    else if (!all_zero(last, before_wrap) || !all_zero(wrapped, after_wrap))
        num_zeros = 0;
    else
        num_zeros = std::min(num_zeros + count, uint32_t(MAX_DELAY_LENGTH));
}

} // namespace tarquil
