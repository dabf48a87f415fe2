// The delay line: what it forgets, and lines whose past goes on while their present begins.

#include "softsynth/effects/delay_line.h"

#include <cmath>
#include <limits>
#include <memory>
#include <vector>

#include <gtest/gtest.h>

namespace tarquil {

namespace {

class DelayLineTest : public testing::Test {
  protected:
    DelayLineTest() {
        in.init(MAX_NUM_SAMPLES);
        out.init(MAX_NUM_SAMPLES);
        delay.init(MAX_NUM_SAMPLES);
    }

    // The next block of the line's output; the input is `value` at the block's sample `at`.
    void run(int at, float value, float delay_samples, float feedback, DelayLine::channel ch) {
        in.nullify();
        out.nullify();
        if (at >= 0)
            in.get_first_left_sample_ptr()[2 * at + int(ch)] = value;
        line->render_no_lfo(in, out, delay_samples, feedback, 0.5F, ch);
        for (uint32_t i = 0; i < out.get_buf_size(); i++) {
            history.push_back(out.get_first_left_sample_ptr()[2 * i + ch]);
            EXPECT_EQ(out.get_first_left_sample_ptr()[2 * i + 1 - ch], 0.0F);
        }
    }

    StereoBuffer in;
    StereoBuffer out;
    MonoBuffer delay;
    std::unique_ptr<DelayLine> line = std::make_unique<DelayLine>();
    std::vector<float> history;
};

TEST_F(DelayLineTest, ValuesThatAreNotFiniteDoNotStay) {
    // The 33rd block of 2044 samples runs over the end of the memory at its sample 128.
    in.init(2044);
    out.init(2044);
    for (const int at : {10, 127, 128, 2000}) {
        line = std::make_unique<DelayLine>();
        for (int block = 0; block < 32; block++)
            run(block == 0 ? 0 : -1, 1.0F, 2044.0F, 0.0F, DelayLine::LEFT);
        run(at, std::numeric_limits<float>::infinity(), 2044.0F, 0.0F, DelayLine::LEFT);
        history.clear();
        run(-1, 0.0F, 2044.0F, 0.0F, DelayLine::LEFT);
        EXPECT_EQ(history, std::vector<float>(2044, 0.0F)) << at;
    }
}

// Noise through two lines in step, the second of which never gives anything but what it shows.
class SplitLines : public DelayLineTest, public testing::WithParamInterface<bool> {
  protected:
    SplitLines() {
        for (StereoBuffer* buffer : {&in, &out, &other_out})
            buffer->init(BLOCK);
        delay.init(BLOCK);
    }

    void expect_same(DelayLine& a, DelayLine::Part part, DelayLine& b, int blocks) {
        for (int block = 0; block < blocks; block++) {
            for (uint32_t i = 0; i < 2 * BLOCK; i++)
                in.get_first_left_sample_ptr()[i] = std::sin(0.1F * float(i * i + num_blocks));
            for (uint32_t i = 0; i < BLOCK; i++)
                delay.get_first_sample_ptr()[i] = 30.0F + 0.7F * float(i);
            num_blocks++;
            render(a, out, part);
            render(b, other_out, DelayLine::Part::PRESENT);
            for (uint32_t i = 0; i < 2 * BLOCK; i++)
                ASSERT_EQ(out.get_first_left_sample_ptr()[i],
                          other_out.get_first_left_sample_ptr()[i])
                    << "block " << block;
        }
    }

    static constexpr uint32_t BLOCK = 2048;

  private:
    void render(DelayLine& which, StereoBuffer& to, DelayLine::Part part) {
        to.nullify();
        if (GetParam())
            which.render_with_lfo(in, to, delay, 0.7F, 0.5F, DelayLine::RIGHT, part);
        else
            which.render_no_lfo(in, to, 44100.0F, 0.7F, 0.5F, DelayLine::RIGHT, part);
    }

    StereoBuffer other_out;
    unsigned num_blocks = 0;
};

TEST_P(SplitLines, PastGoesOnAndPresentBegins) {
    const auto whole = std::make_unique<DelayLine>();
    const auto fresh = std::make_unique<DelayLine>();
    // At the memory's start, in its midst, where one part runs over its end, and a past that is
    // younger than its delay.
    for (const int blocks : {64, 15, 30, 5}) {
        expect_same(*line, DelayLine::Part::PRESENT, *whole, blocks);
        line->split();
        expect_same(*line, DelayLine::Part::PAST, *whole, 1);
        expect_same(*line, DelayLine::Part::PRESENT, *fresh, 1);
        expect_same(*line, DelayLine::Part::PAST, *whole, 1);
        expect_same(*line, DelayLine::Part::PRESENT, *fresh, 40);
        whole->reset();
        line->reset();
        fresh->reset();
    }
}

INSTANTIATE_TEST_SUITE_P(FixedAndSwept, SplitLines, testing::Bool());

} // namespace

} // namespace tarquil
