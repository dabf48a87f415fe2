// Tests of what a program change and a bank's globals leave in the timelines.

#include "softsynth/voices/program_change.h"

#include <gtest/gtest.h>

#include <memory>

namespace tarquil {

namespace {

uint8_t byte_of(unsigned number, unsigned salt) {
    return uint8_t((number * 7 + salt) % 128);
}

TEST(ProgramChange, EachControllerGoesWhereItsScopeSays) {
    const auto bank = std::make_unique<TarqSettings>();
    Instrument& instrument = bank->get_instrument(5);
    for (unsigned number = 0; number < NUM_CONTROLLERS; number++) {
        instrument.set_controller(number, byte_of(number, 1));
        bank->set_global_controller(number, byte_of(number, 2));
    }
    ControllerArray of_channel;
    emit_program_change(instrument, of_channel, 64);
    ControllerArray of_globals;
    emit_global_controllers(*bank, of_globals, 96);
    for (unsigned number = 0; number < NUM_CONTROLLERS; number++) {
        const bool is_global = is_global_controller(number);
        const Controller& changed = (is_global ? of_globals : of_channel).get_controller(number);
        const Controller& other = (is_global ? of_channel : of_globals).get_controller(number);
        EXPECT_EQ(other.size(), 1U) << number;
        ASSERT_EQ(changed.size(), 2U) << number;
        EXPECT_EQ(changed.event(1).time, is_global ? 96U : 64U) << number;
        EXPECT_EQ(changed.get_last_int_value(), byte_of(number, is_global ? 2 : 1)) << number;
    }
}

} // namespace

} // namespace tarquil
