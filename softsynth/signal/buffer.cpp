// Fixed-capacity blocks of samples and their arithmetic.

#include "softsynth/signal/buffer.h"

#include <algorithm>
#include <cstring>

#include "common/assertion.h"

namespace tarquil {

void MonoBuffer::nullify() {
    std::fill_n(samples, buf_size, 0.0F);
}

void StereoBuffer::nullify() {
    std::fill_n(samples, 2 * buf_size, 0.0F);
}

float* StereoBuffer::get_left_sample_ptr(uint32_t time) {
    TARQ_ASSERT(time <= buf_size);
    return samples + size_t(2) * time;
}

float* StereoBuffer::get_right_sample_ptr(uint32_t time) {
    TARQ_ASSERT(time <= buf_size);
    return samples + size_t(2) * time + 1;
}

bool StereoBuffer::is_valid(const float* p) const {
    return p >= samples && p < samples + size_t(2) * buf_size + 1;
}

MonoBuffer& MonoBuffer::operator+=(const MonoBuffer& o) {
    float* dptr = samples;
    const float* sptr = o.samples;
    TARQ_ASSERT(o.buf_size == buf_size);
    TARQ_ASSERT(buf_size % 4 == 0);
    TARQ_ASSERT(IS_SSE_ALIGNED(dptr));
    TARQ_ASSERT(IS_SSE_ALIGNED(sptr));
    for (uint32_t i = 0; i < buf_size; i++)
        dptr[i] += sptr[i];
    return *this;
}

StereoBuffer& StereoBuffer::operator+=(const StereoBuffer& o) {
    float* dptr = samples;
    const float* sptr = o.samples;
    TARQ_ASSERT(o.buf_size == buf_size);
    TARQ_ASSERT(buf_size % 4 == 0);
    TARQ_ASSERT(IS_SSE_ALIGNED(dptr));
    TARQ_ASSERT(IS_SSE_ALIGNED(sptr));
    for (uint32_t i = 0; i < 2 * buf_size; i++)
        dptr[i] += sptr[i];
    return *this;
}

StereoBuffer& StereoBuffer::operator+=(float constant) {
    for (uint32_t i = 0; i < 2 * buf_size; i++)
        samples[i] += constant;
    return *this;
}

void Buffer::add_scaled(const MonoBuffer& first, const MonoBuffer& second, float factor,
                        MonoBuffer& dest) {
    float* dptr = dest.get_first_sample_ptr();
    const float* ptr1 = first.get_first_sample_ptr();
    const float* ptr2 = second.get_first_sample_ptr();
    TARQ_ASSERT(first.buf_size == second.buf_size);
    TARQ_ASSERT(dest.buf_size == second.buf_size);
    TARQ_ASSERT(first.buf_size % 4 == 0);
    TARQ_ASSERT(IS_SSE_ALIGNED(dptr));
    TARQ_ASSERT(IS_SSE_ALIGNED(ptr1));
    TARQ_ASSERT(IS_SSE_ALIGNED(ptr2));
    for (uint32_t i = 0; i < first.buf_size; i++)
        dptr[i] = ptr1[i] + ptr2[i] * factor;
}

void Buffer::add_scaled(const StereoBuffer& signal_buf, float factor, StereoBuffer& dest_buf) {
    float* dest_ptr = dest_buf.get_first_left_sample_ptr();
    const float* signal_ptr = signal_buf.get_first_left_sample_ptr();
    TARQ_ASSERT(signal_buf.buf_size == dest_buf.buf_size);
    TARQ_ASSERT(signal_buf.buf_size % 4 == 0);
    TARQ_ASSERT(IS_SSE_ALIGNED(dest_ptr));
    TARQ_ASSERT(IS_SSE_ALIGNED(signal_ptr));
    for (uint32_t i = 0; i < 2 * signal_buf.buf_size; i++)
        dest_ptr[i] += signal_ptr[i] * factor;
}

void Buffer::multiply(const MonoBuffer& buf1, const MonoBuffer& buf2, MonoBuffer& dest) {
    float* dptr = dest.get_first_sample_ptr();
    const float* ptr1 = buf1.get_first_sample_ptr();
    const float* ptr2 = buf2.get_first_sample_ptr();
    TARQ_ASSERT(buf1.buf_size == buf2.buf_size);
    TARQ_ASSERT(dest.buf_size == buf2.buf_size);
    TARQ_ASSERT(buf1.buf_size % 4 == 0);
    TARQ_ASSERT(IS_SSE_ALIGNED(dptr));
    TARQ_ASSERT(IS_SSE_ALIGNED(ptr1));
    TARQ_ASSERT(IS_SSE_ALIGNED(ptr2));
    for (uint32_t i = 0; i < buf1.buf_size; i++)
        dptr[i] = ptr1[i] * ptr2[i];
}

void Buffer::mix(const MonoBuffer& buf1, const MonoBuffer& buf2, const MonoBuffer& mixbuf,
                 MonoBuffer& dest) {
    float* dptr = dest.get_first_sample_ptr();
    const float* ptr1 = buf1.get_first_sample_ptr();
    const float* ptr2 = buf2.get_first_sample_ptr();
    const float* mixptr = mixbuf.get_first_sample_ptr();
    TARQ_ASSERT(buf1.buf_size == buf2.buf_size);
    TARQ_ASSERT(mixbuf.buf_size == buf2.buf_size);
    TARQ_ASSERT(dest.buf_size == buf2.buf_size);
    TARQ_ASSERT(buf1.buf_size % 4 == 0);
    TARQ_ASSERT(IS_SSE_ALIGNED(dptr));
    TARQ_ASSERT(IS_SSE_ALIGNED(ptr1));
    TARQ_ASSERT(IS_SSE_ALIGNED(ptr2));
    TARQ_ASSERT(IS_SSE_ALIGNED(mixptr));
    for (uint32_t i = 0; i < buf1.buf_size; i++)
        dptr[i] = ptr1[i] + (ptr2[i] - ptr1[i]) * mixptr[i];
}

void Buffer::scale(const MonoBuffer& buf, float factor, MonoBuffer& dest) {
    const float* sptr = buf.get_first_sample_ptr();
    float* dptr = dest.get_first_sample_ptr();
    TARQ_ASSERT(buf.buf_size == dest.buf_size);
    TARQ_ASSERT(buf.buf_size % 4 == 0);
    TARQ_ASSERT(IS_SSE_ALIGNED(sptr));
    TARQ_ASSERT(IS_SSE_ALIGNED(dptr));
    for (uint32_t i = 0; i < buf.buf_size; i++)
        dptr[i] = sptr[i] * factor;
}

void Buffer::scale(const StereoBuffer& buf, float factor, StereoBuffer& dest) {
    const float* sptr = buf.get_first_left_sample_ptr();
    float* dptr = dest.get_first_left_sample_ptr();
    TARQ_ASSERT(buf.buf_size == dest.buf_size);
    TARQ_ASSERT(buf.buf_size % 2 == 0); // one step of four floats covers two frames
    TARQ_ASSERT(IS_SSE_ALIGNED(sptr));
    TARQ_ASSERT(IS_SSE_ALIGNED(dptr));
    for (uint32_t i = 0; i < 2 * buf.buf_size; i++)
        dptr[i] = sptr[i] * factor;
}

void Buffer::copy(const StereoBuffer& src, StereoBuffer& dest) {
    TARQ_ASSERT(dest.buf_size == src.buf_size);
    std::memcpy(dest.get_first_left_sample_ptr(), src.get_first_left_sample_ptr(),
                size_t(2) * src.buf_size * sizeof(float));
}

void StereoBuffer::make_from_mono(const MonoBuffer& signal_buf, const MonoBuffer& vol_buf,
                                  const MonoBuffer& pan_buf_left, const MonoBuffer& pan_buf_right) {
    const float* signal_ptr = signal_buf.get_first_sample_ptr();
    const float* vol_ptr = vol_buf.get_first_sample_ptr();
    const float* pan_left_ptr = pan_buf_left.get_first_sample_ptr();
    const float* pan_right_ptr = pan_buf_right.get_first_sample_ptr();
    float* dest_ptr = samples;
    TARQ_ASSERT(signal_buf.get_buf_size() == buf_size);
    TARQ_ASSERT(signal_buf.get_buf_size() == vol_buf.get_buf_size());
    TARQ_ASSERT(signal_buf.get_buf_size() == pan_buf_left.get_buf_size());
    TARQ_ASSERT(signal_buf.get_buf_size() == pan_buf_right.get_buf_size());
    TARQ_ASSERT(signal_buf.get_buf_size() % 4 == 0);
    TARQ_ASSERT(IS_SSE_ALIGNED(signal_ptr));
    TARQ_ASSERT(IS_SSE_ALIGNED(vol_ptr));
    TARQ_ASSERT(IS_SSE_ALIGNED(pan_left_ptr));
    TARQ_ASSERT(IS_SSE_ALIGNED(pan_right_ptr));
    TARQ_ASSERT(IS_SSE_ALIGNED(dest_ptr));
    for (uint32_t i = 0; i < buf_size; i++) {
        const float loud = signal_ptr[i] * vol_ptr[i];
        dest_ptr[2 * i] = loud * pan_left_ptr[i];
        dest_ptr[2 * i + 1] = loud * pan_right_ptr[i];
    }
}

void StereoBuffer::make_from_mono(const MonoBuffer& signal_buf, float volume, float pan_left,
                                  float pan_right) {
    const float* signal_ptr = signal_buf.get_first_sample_ptr();
    TARQ_ASSERT(signal_buf.get_buf_size() == buf_size);
    for (uint32_t i = 0; i < buf_size; i++) {
        const float loud = signal_ptr[i] * volume;
        samples[2 * i] = loud * pan_left;
        samples[2 * i + 1] = loud * pan_right;
    }
}

} // namespace tarquil
