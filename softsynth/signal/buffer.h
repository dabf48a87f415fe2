// Fixed-capacity blocks of samples and their arithmetic.
//
// A buffer holds up to MAX_NUM_SAMPLES samples (mono) or frames (stereo, interleaved left/right) on
// a 16-byte boundary, of which the first `buf_size` are valid.  Nothing here allocates.  Every
// operation steps four floats at a time and runs its body at least once: a size of 0 is never
// passed.  Preconditions are assertions.

#pragma once

#include <cstdint>

#include "softsynth/parameters/constants.h"

namespace tarquil {

#define IS_SSE_ALIGNED(p) ((reinterpret_cast<uintptr_t>(p) & 15) == 0)

class MonoBuffer;
class StereoBuffer;

class Buffer {
  public:
    // Sets the size (at most MAX_NUM_SAMPLES); the contents stay as they are.
    void init(uint32_t size) { buf_size = size; }
    // As init, for effects that may pass their input through.
    void init_bypass_uninit(uint32_t size) { init(size); }
    [[nodiscard]] uint32_t get_buf_size() const { return buf_size; }

    // dest = first + second * factor
    static void add_scaled(const MonoBuffer& first, const MonoBuffer& second, float factor,
                           MonoBuffer& dest);
    // dest += signal * factor, both sides
    static void add_scaled(const StereoBuffer& signal_buf, float factor, StereoBuffer& dest_buf);
    // dest = buf1 * buf2
    static void multiply(const MonoBuffer& buf1, const MonoBuffer& buf2, MonoBuffer& dest);
    // Crossfade: dest = buf1 + (buf2 - buf1) * mixbuf
    static void mix(const MonoBuffer& buf1, const MonoBuffer& buf2, const MonoBuffer& mixbuf,
                    MonoBuffer& dest);
    // dest = buf * factor; dest may be buf
    static void scale(const MonoBuffer& buf, float factor, MonoBuffer& dest);
    static void scale(const StereoBuffer& buf, float factor, StereoBuffer& dest);
    static void copy(const StereoBuffer& src, StereoBuffer& dest);

  protected:
    uint32_t buf_size = 0;
};

class MonoBuffer : public Buffer {
  public:
    // Clears the valid samples.
    void nullify();
    float* get_first_sample_ptr() { return samples; }
    [[nodiscard]] const float* get_first_sample_ptr() const { return samples; }
    [[nodiscard]] bool is_valid(const float* p) const {
        return p >= samples && p < samples + buf_size;
    }

    MonoBuffer& operator+=(const MonoBuffer& o);

  private:
    alignas(16) float samples[MAX_NUM_SAMPLES] = {};
};

class StereoBuffer : public Buffer {
  public:
    // Clears the valid frames.
    void nullify();
    float* get_first_left_sample_ptr() { return samples; }
    [[nodiscard]] const float* get_first_left_sample_ptr() const { return samples; }
    // `time` in frames, up to and including buf_size (one past the end).
    float* get_left_sample_ptr(uint32_t time);
    float* get_right_sample_ptr(uint32_t time);
    [[nodiscard]] bool is_valid(const float* p) const;

    StereoBuffer& operator+=(const StereoBuffer& o);
    StereoBuffer& operator+=(float constant);

    // left = (signal * vol) * pan_left, right = (signal * vol) * pan_right
    void make_from_mono(const MonoBuffer& signal_buf, const MonoBuffer& vol_buf,
                        const MonoBuffer& pan_buf_left, const MonoBuffer& pan_buf_right);
    void make_from_mono(const MonoBuffer& signal_buf, float volume, float pan_left,
                        float pan_right);

  private:
    // One more frame than the capacity, so that the pointers one past the end stay inside.
    alignas(16) float samples[2 * MAX_NUM_SAMPLES + 4] = {};
};

} // namespace tarquil
