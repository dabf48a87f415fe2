// What is shown is what the engine does, measured at every byte.

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "player/shared_waveforms.h"
#include "softsynth/effects/mono_effect.h"
#include "softsynth/effects/stereo_effect.h"
#include "softsynth/parameters/control_meaning.h"
#include "softsynth/parameters/controller_table.h"
#include "softsynth/parameters/families.h"

namespace tarquil {

namespace {

// `measured` agrees with `shown` to one part in `parts`; both may be infinite.
void expect_same(double measured, double shown, const std::string& what, double parts = 1e5) {
    if (std::isinf(shown) || std::isinf(measured))
        EXPECT_EQ(measured, shown) << what;
    else
        EXPECT_NEAR(measured, shown, std::abs(shown) / parts + 1e-9) << what;
}

// What an insert effect makes of a steady input, one parameter at `byte`.
class InsertEffect {
  public:
    InsertEffect(MonoEffectType effect_type, std::array<int, 5> effect_parameters)
        : type(effect_type), parameters(effect_parameters) {}

    // The output after `blocks` blocks of a constant.
    float steady(float input, int blocks = 1) const {
        return process([input](uint32_t) { return input; }, blocks).back();
    }

    std::vector<float> process(const std::function<float(uint32_t)>& input, int blocks) const {
        const auto effect = std::make_unique<MonoEffect>();
        const auto buffer = std::make_unique<MonoBuffer>();
        const auto unused = std::make_unique<MonoBuffer>();
        std::vector<float> out;
        for (int block = 0; block < blocks; block++) {
            buffer->init(MAX_NUM_SAMPLES);
            float* samples = buffer->get_first_sample_ptr();
            for (uint32_t i = 0; i < MAX_NUM_SAMPLES; i++)
                samples[i] = input(i);
            effect->render(type, *buffer, parameters[0], parameters[1], parameters[2],
                           parameters[3], parameters[4], *unused, *unused);
            out.assign(samples, samples + MAX_NUM_SAMPLES);
        }
        return out;
    }

    [[nodiscard]] double shown(unsigned index) const {
        ControllerBytes bytes = default_controller_bytes();
        bytes[mono_effect_rows(1).type] = uint8_t(type);
        const unsigned number = mono_effect_rows(1).parameter(index);
        return quantity_of(number, parameters[index], meaning_of(number, bytes));
    }

  private:
    const MonoEffectType type;
    const std::array<int, 5> parameters;
};

TEST(ShownValues, DistortionBendsAsShown) {
    for (int byte = 0; byte < 128; byte++) {
        const InsertEffect drive(MONO_EFFECT_DISTORTION, {0, byte, 64, 0, 0});
        const float rise = drive.steady(0.75F) - drive.steady(0.25F);
        expect_same(drive.shown(2) * 0.5 / double(rise), drive.shown(1),
                    "drive " + std::to_string(byte), 100);
        const InsertEffect gain(MONO_EFFECT_DISTORTION, {127, 0, byte, 0, 0});
        expect_same(double(gain.steady(0.5F)) / 0.5, gain.shown(2), "gain " + std::to_string(byte));
        // A hard clip stays at the threshold; the asymmetry moves the curve, whose value at rest
        // goes.
        const InsertEffect threshold(MONO_EFFECT_DISTORTION, {byte, 127, 64, 0, 0});
        expect_same(double(threshold.steady(2.0F)) / threshold.shown(2), threshold.shown(0),
                    "threshold " + std::to_string(byte));
        const InsertEffect asymmetry(MONO_EFFECT_DISTORTION, {100, 127, 64, byte, 0});
        const InsertEffect symmetric(MONO_EFFECT_DISTORTION, {100, 127, 64, 0, 0});
        const auto moved = float(asymmetry.shown(3));
        EXPECT_NEAR(asymmetry.steady(0.1F),
                    symmetric.steady(0.1F + moved) - symmetric.steady(moved), 1e-6F)
            << "asymmetry " << byte;
    }
}

TEST(ShownValues, CompressionIsWhatIsShown) {
    constexpr int BLOCKS = 30; // the follower has the input's level by then
    for (int byte = 0; byte < 128; byte += 3) {
        const InsertEffect effect(MONO_EFFECT_COMPRESSOR, {40, byte + byte % 2, 0, 60, 100});
        const double over = 0.9 / effect.shown(0);
        const double gain = double(effect.steady(0.9F, BLOCKS)) / 0.9 / effect.shown(4);
        expect_same(std::log(gain) / std::log(over) + 1.0, 1.0 / effect.shown(1),
                    "ratio " + std::to_string(byte), 200);
    }
    const InsertEffect limiter(MONO_EFFECT_COMPRESSOR, {40, 127, 0, 60, 100});
    EXPECT_TRUE(std::isinf(limiter.shown(1)));
    expect_same(double(limiter.steady(0.9F, BLOCKS)), limiter.shown(0) * limiter.shown(4),
                "limiter", 1000);
}

TEST(ShownValues, TheLoFiEffectHoldsAndCutsAsShown) {
    for (int byte = 0; byte < 128; byte++) {
        const InsertEffect effect(MONO_EFFECT_LOFI, {byte, byte, 0, 0, 0});
        const std::vector<float> out =
            effect.process([](uint32_t n) { return 0.5F + float(n) * 1e-3F / MAX_NUM_SAMPLES; }, 1);
        const auto hold = size_t(effect.shown(1));
        const double step = std::ldexp(1.0, int(effect.shown(0)) - 24);
        for (size_t i = 0; i < out.size(); i++) {
            ASSERT_EQ(out[i], out[i - i % hold]) << byte << " " << i;
            ASSERT_EQ(std::fmod(double(out[i]), step), 0.0) << byte;
        }
    }
}

// A click through the stereo effect; the delay's left and the flanger's shortest line.
TEST(ShownValues, TheStereoEffectEchoesWhenAndAsShown) {
    const auto effect = std::make_unique<StereoEffect>();
    const auto scratch = std::make_unique<StereoEffectScratch>(shared_waveforms());
    StereoBuffer in;
    StereoBuffer out;
    for (int byte = 0; byte < 128; byte++) {
        for (const StereoEffectType type : {STEREO_EFFECT_DELAY, STEREO_EFFECT_FLANGER}) {
            const int p[] = {type == STEREO_EFFECT_DELAY ? 0 : byte, 0,
                             type == STEREO_EFFECT_DELAY ? byte : 0, 0, byte};
            ControllerBytes bytes = default_controller_bytes();
            bytes[STEREO_EFFECT_ROWS.type] = uint8_t(type);
            const auto shown = [&](unsigned index) {
                const unsigned number = STEREO_EFFECT_ROWS.parameter(index);
                return quantity_of(number, p[index], meaning_of(number, bytes));
            };
            in.init(MAX_NUM_SAMPLES);
            in.nullify();
            *in.get_left_sample_ptr(0) = 1.0F;
            out.init(MAX_NUM_SAMPLES);
            out.nullify();
            effect->render(STEREO_EFFECT_OFF, in, out, 0, 0, 0, 0, 0, 1.0F, *scratch);
            effect->render(type, in, out, p[0], p[1], p[2], p[3], p[4], 1.0F, *scratch);
            double first = 0.0;
            double second = 0.0;
            double sum = 0.0;
            const double delay = type == STEREO_EFFECT_DELAY ? shown(0) * SAMPLE_RATE : shown(0);
            for (uint32_t i = 0; i < uint32_t(2.5 * delay) && i < MAX_NUM_SAMPLES; i++) {
                const auto sample = double(*out.get_left_sample_ptr(i));
                if (double(i) < 1.5 * delay) {
                    first += sample;
                    sum += sample * i;
                } else {
                    second += sample;
                }
            }
            EXPECT_NEAR(sum / first, delay, type == STEREO_EFFECT_DELAY ? 1.0 : 0.01) << byte;
            EXPECT_NEAR(second / first, shown(type == STEREO_EFFECT_DELAY ? 2 : 4), 1e-3) << byte;
        }
    }
}

} // namespace

} // namespace tarquil
