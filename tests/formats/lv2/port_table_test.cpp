#include "formats/lv2/port_table.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "softsynth/parameters/controller_display.h"

namespace tarquil {
namespace {

TEST(Lv2Control, EveryByteComesBackAsWhatSoundsTheSame) {
    for (const Lv2Control& control : lv2_controls()) {
        const ControllerInfo& info = control.info();
        for (int byte = info.choices.first; byte <= info.choices.last; byte++) {
            const int back = control.byte(control.value(byte));
            EXPECT_EQ(controller_quantity(info.number, back),
                      controller_quantity(info.number, byte))
                << info.key << " " << byte;
            EXPECT_GE(control.value(byte), control.lowest()) << info.key;
            EXPECT_LE(control.value(byte), control.highest()) << info.key;
            EXPECT_TRUE(std::isfinite(control.value(byte))) << info.key << " " << byte;
        }
    }
}

TEST(Lv2Control, ValuesAreInTheUnitsThatAreShown) {
    const auto control = [](unsigned number) {
        return lv2_controls()[lv2_port_of(number) - NUM_FIXED_LV2_PORTS];
    };
    EXPECT_NEAR(control(CTRL_FILTER1_CUTOFF).value(127), 20480, 1);
    EXPECT_TRUE(control(CTRL_FILTER1_CUTOFF).is_logarithmic());
    EXPECT_FLOAT_EQ(control(CTRL_MAIN_VOLUME).value(127), 0);
    EXPECT_FLOAT_EQ(control(CTRL_MAIN_VOLUME).value(0), -160);
    EXPECT_EQ(control(CTRL_OSC1_TYPE).byte(2.2F), 2);
    EXPECT_EQ(control(CTRL_OSC1_TYPE).byte(1e9F), control(CTRL_OSC1_TYPE).info().choices.last);
    EXPECT_EQ(control(CTRL_PANNING).byte(std::numeric_limits<float>::quiet_NaN()), -1);
    EXPECT_EQ(lv2_port_of(CTRL_PITCH_BEND_MSB), 0U);
}

} // namespace
} // namespace tarquil
