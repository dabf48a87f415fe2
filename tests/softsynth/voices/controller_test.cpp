// Controller timelines.

#include "softsynth/voices/controller.h"

#include <gtest/gtest.h>

namespace tarquil {

namespace {

TEST(Controller, RendersStepsAtTheirSamplesAndKeepsTheLastValue) {
    Controller controller;
    controller.set_mapping(0.0F, 1.0F);
    static MonoBuffer buffer;
    buffer.init(16);
    controller.push_back({100, 7});
    controller.push_back({104, 2});
    controller.push_back({104, 3}); // the later of two at one time wins
    EXPECT_TRUE(controller.has_multiple_values());
    controller.render(buffer, 96, false);
    for (int i = 0; i < 16; i++)
        EXPECT_EQ(buffer.get_first_sample_ptr()[i], i < 4 ? 0.0F : i < 8 ? 7.0F : 3.0F) << i;
    controller.reset();
    EXPECT_FALSE(controller.has_multiple_values());
    EXPECT_EQ(controller.get_last_value(), 3.0F);
    controller.render_cubed(buffer, 112);
    for (int i = 0; i < 16; i++)
        EXPECT_EQ(buffer.get_first_sample_ptr()[i], 27.0F);
}

TEST(Controller, GrowsBeyondItsFirstEightEvents) {
    Controller controller;
    controller.set_mapping(0.0F, 1.0F);
    for (int i = 0; i < 40; i++)
        controller.push_back({uint32_t(i), i});
    static MonoBuffer buffer;
    buffer.init(40);
    controller.render(buffer, 0, false);
    for (int i = 0; i < 40; i++)
        EXPECT_EQ(buffer.get_first_sample_ptr()[i], float(i));
}

TEST(ControllerDeathTest, EventsOutsideTheBlockAbort) {
    Controller controller;
    controller.push_back({32, 1});
    static MonoBuffer buffer;
    buffer.init(16);
    EXPECT_DEATH(controller.render(buffer, 0, false),
                 "Assert failure at softsynth/voices/controller");
    EXPECT_DEATH(ControllerArray().get_controller(206), "num < NUM_CONTROLLERS");
}

} // namespace

} // namespace tarquil
