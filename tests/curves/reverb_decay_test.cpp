// Tests of the reverb's decay: what is drawn is how the reverb dies down.

#include "curves/reverb_decay.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <numbers>
#include <vector>

#include "softsynth/parameters/controller_table.h"
#include "softsynth/reverb/revmodel.h"

namespace tarquil {

namespace {

// How a burst of that frequency dies down, from 0.4 s to 1.2 s after its end.
double measured_decay(const ControllerBytes& bytes, double hertz) {
    const auto reverb = std::make_unique<revmodel>();
    reverb->setroomsize(map_char_to_float(CTRL_REVERB_ROOMSIZE, bytes[CTRL_REVERB_ROOMSIZE]));
    reverb->setdamp(map_char_to_float(CTRL_REVERB_DAMP, bytes[CTRL_REVERB_DAMP]));
    reverb->update();
    constexpr uint32_t FRAMES = 2 * SAMPLE_RATE;
    constexpr uint32_t BURST = SAMPLE_RATE / 4;
    std::vector<float> in(2 * FRAMES);
    for (uint32_t i = 0; i < BURST; i++)
        in[2 * i] = in[2 * i + 1] = float(std::sin(2 * std::numbers::pi * hertz * i / SAMPLE_RATE) *
                                          std::pow(std::sin(std::numbers::pi * i / BURST), 2));
    std::vector<float> out(2 * FRAMES);
    reverb->processreplace(in.data(), out.data(), FRAMES);
    const auto energy = [&](double from, double to) {
        double sum = 0.0;
        for (uint32_t i = BURST + uint32_t(from * SAMPLE_RATE);
             i < BURST + uint32_t(to * SAMPLE_RATE); i++)
            sum += double(out[2 * i]) * double(out[2 * i]);
        return 10.0 * std::log10(sum);
    };
    const double fallen = energy(0.4, 0.6) - energy(1.0, 1.2);
    return 0.6 * 60.0 / fallen;
}

TEST(ReverbDecay, IsHowTheReverbDiesDown) {
    ControllerBytes bytes{};
    for (const int room : {40, 90}) {
        for (const int damping : {0, 60}) {
            bytes[CTRL_REVERB_ROOMSIZE] = uint8_t(room);
            bytes[CTRL_REVERB_DAMP] = uint8_t(damping);
            for (const double hertz : {300.0, 2000.0}) {
                const double drawn = reverb_decay_seconds(bytes, hertz);
                // Shorter combs die down earlier, which counts less and less.
                EXPECT_NEAR(measured_decay(bytes, hertz) / drawn, 0.9, 0.2)
                    << room << " " << damping << " " << hertz;
            }
        }
    }
}

} // namespace

} // namespace tarquil
