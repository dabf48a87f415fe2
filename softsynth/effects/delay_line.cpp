// One stereo side's circular delay memory with feedback.

#include "softsynth/effects/delay_line.h"

#include <algorithm>

#include "common/assertion.h"
#include "softsynth/signal/finite.h"

namespace tarquil {

namespace {

constexpr int32_t POSITION_MASK = MAX_DELAY_LENGTH - 1;

// The past goes on where its present does not come meanwhile: at the memory's far end.
constexpr int32_t PAST_OFFSET = DelayLine::PAST_LENGTH;
static_assert(DelayLine::LONGEST_PAST_DELAY > SAMPLE_RATE + 2);

// y[n] and b[n] at the delays that delayed(memory, i) reads.
template <typename Memory, typename Delayed>
void echo(Memory& memory, const Delayed& delayed, const float* in, float* out, uint32_t size,
          float feedback, float wet) {
    for (uint32_t i = 0; i < size; i++, in += 2, out += 2) {
        const float y = delayed(memory, i);
        const float x = *in; // before the output, which may be the same buffer
        *out += wet * y;
        memory.write(feedback * y + x);
    }
}

} // namespace

// Each reads what was written `age` samples ago; age 0 is what is about to be overwritten.

// Of a line that has gone all round.
struct DelayLine::FullMemory {
    [[nodiscard]] float read(int32_t age) const { return buffer[(pos - age) & POSITION_MASK]; }
    void write(float sample) {
        buffer[pos] = sample;
        pos = (pos + 1) & POSITION_MASK;
    }

    float* buffer;
    int32_t pos;
};

// Of a line that has been cleared since.
struct DelayLine::YoungMemory {
    [[nodiscard]] float read(int32_t age) const {
        return age > 0 && age <= held ? buffer[(pos - age) & POSITION_MASK] : 0.0F;
    }
    void write(float sample) {
        buffer[pos] = sample;
        pos = (pos + 1) & POSITION_MASK;
        held++;
    }

    float* buffer;
    int32_t pos;
    int32_t held;
};

struct DelayLine::PastMemory {
    [[nodiscard]] float read(int32_t age) const {
        TARQ_ASSERT(age <= LONGEST_PAST_DELAY);
        const int32_t place = count - age; // from the split on
        if (age == 0 || -place > held)
            return 0.0F;
        return buffer[(pos + place + (place < 0 ? 0 : PAST_OFFSET)) & POSITION_MASK];
    }
    void write(float sample) {
        buffer[(pos + PAST_OFFSET + count) & POSITION_MASK] = sample;
        count++;
    }

    float* buffer;
    int32_t pos;
    int32_t held;
    int32_t count;
};

void DelayLine::reset() {
    num_held = 0;
    num_zeros = MAX_DELAY_LENGTH;
}

void DelayLine::split() {
    past_pos = circbuf_pos;
    past_held = num_held;
    past_count = 0;
    reset();
}

template <typename Act> void DelayLine::render_part(Part part, uint32_t count, const Act& act) {
    if (part == Part::PAST) {
        TARQ_ASSERT(past_count + int32_t(count) <= PAST_LENGTH);
        PastMemory memory{buffer, past_pos, past_held, past_count};
        act(memory);
        past_count = memory.count;
        return;
    }
    if (num_held == MAX_DELAY_LENGTH) {
        FullMemory memory{buffer, circbuf_pos};
        act(memory);
        circbuf_pos = memory.pos;
    } else {
        YoungMemory memory{buffer, circbuf_pos, num_held};
        act(memory);
        circbuf_pos = memory.pos;
        num_held = std::min(memory.held, MAX_DELAY_LENGTH);
    }
    look_at_written(count);
}

void DelayLine::render_no_lfo(const StereoBuffer& inbuf, StereoBuffer& outbuf, float delay_samples,
                              float feedback, float wet, channel ch, Part part) {
    TARQ_ASSERT(inbuf.get_buf_size() == outbuf.get_buf_size());
    const float* inptr = inbuf.get_first_left_sample_ptr() + ch;
    float* outptr = outbuf.get_first_left_sample_ptr() + ch;
    const uint32_t size = inbuf.get_buf_size();
    if (part == Part::PRESENT && num_zeros >= MAX_DELAY_LENGTH &&
        all_zero(inbuf.get_first_left_sample_ptr(), 2 * size)) {
        // Silence into an empty line stays silence; that it adds 0 turns -0 into 0.
        for (uint32_t i = 0; i < size; i++)
            outptr[size_t(2) * i] += wet * 0.0F;
        return;
    }
    const auto d = int32_t(delay_samples);
    const auto delayed = [d](const auto& memory, uint32_t /*i*/) { return memory.read(d); };
    render_part(part, size,
                [&](auto& memory) { echo(memory, delayed, inptr, outptr, size, feedback, wet); });
}

void DelayLine::render_moved(const StereoBuffer& inbuf, StereoBuffer& outbuf, float from_samples,
                             float to_samples, float feedback, float wet, channel ch) {
    const uint32_t size = inbuf.get_buf_size();
    const auto from = int32_t(from_samples);
    const auto to = int32_t(to_samples);
    const float step = 1.0F / float(size);
    const auto delayed = [from, to, step](const auto& memory, uint32_t i) {
        const float before = memory.read(from);
        return before + (memory.read(to) - before) * (float(i + 1) * step);
    };
    render_part(Part::PRESENT, size, [&](auto& memory) {
        echo(memory, delayed, inbuf.get_first_left_sample_ptr() + ch,
             outbuf.get_first_left_sample_ptr() + ch, size, feedback, wet);
    });
}

void DelayLine::render_with_lfo(const StereoBuffer& inbuf, StereoBuffer& outbuf,
                                const MonoBuffer& delay, float feedback, float wet, channel ch,
                                Part part) {
    TARQ_ASSERT(inbuf.get_buf_size() == delay.get_buf_size());
    TARQ_ASSERT(outbuf.get_buf_size() == delay.get_buf_size());
    TARQ_ASSERT(circbuf_pos >= 0 && circbuf_pos < MAX_DELAY_LENGTH);
    const float* inptr = inbuf.get_first_left_sample_ptr() + ch;
    float* outptr = outbuf.get_first_left_sample_ptr() + ch;
    const float* delayptr = delay.get_first_sample_ptr();
    const uint32_t size = delay.get_buf_size();
    const auto delayed = [delayptr](const auto& memory, uint32_t i) {
        const float d = delayptr[i];
        TARQ_ASSERT(d >= 0.0f);
        const auto d1 = int32_t(d);
        // clang-format off
        TARQ_ASSERT(d1 > 0 && d1 < (MAX_DELAY_LENGTH-2));
        // clang-format on
        return cubic_interpolate(memory.read(d1 - 1), memory.read(d1), memory.read(d1 + 1),
                                 memory.read(d1 + 2), d - float(d1));
    };
    render_part(part, size,
                [&](auto& memory) { echo(memory, delayed, inptr, outptr, size, feedback, wet); });
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
