// Controller timelines.

#include "softsynth/voices/controller.h"

#include <gtest/gtest.h>

namespace tarquil {

namespace {

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

} // namespace

} // namespace tarquil
