// A frame and its bytes.

#include "softsynth/lpc/speech_frame.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace tarquil {

TEST(SpeechFrame, PitchAndVoicingTravelInTheOrderOfTheLines) {
    std::mt19937 random(3);
    for (int round = 0; round < 2000; round++) {
        SpeechFrame frame{{},
                          uint8_t(random()),
                          uint8_t(random()),
                          uint8_t(random() % 8),
                          int8_t(int(random() % 32) + MIN_BEND)};
        for (uint8_t& line : frame.lines)
            line = uint8_t(random());
        separate_lines(frame.lines);
        EXPECT_EQ(unpack_frame(pack_frame(frame)), frame);
    }
}

TEST(SpeechFrame, AnyBytesAreLinesThatKeepTheirDistance) {
    std::mt19937 random(4);
    for (int round = 0; round < 2000; round++) {
        // Few values, so that lines coincide; at the ends of the range too.
        const unsigned lowest = random() % 256;
        SpeechFrameBytes bytes{};
        for (uint8_t& byte : bytes)
            byte = uint8_t(lowest + random() % unsigned(1 + round % 20));
        const SpeechFrame frame = unpack_frame(bytes);
        for (size_t i = 1; i < LPC_ORDER; i++)
            ASSERT_GE(frame.lines[i] - frame.lines[i - 1], MIN_LINE_DISTANCE) << "round " << round;
        ASSERT_LE(frame.voicing, MAX_VOICING);
    }
}

TEST(SpeechFrame, LevelsAreHalfDecibelsAndPitchesAreSixtyFourAnOctave) {
    EXPECT_EQ(level_amplitude(0), 0.0);
    // The top is 6 dB above 1; twice the amplitude is 6.02 dB, so 12 steps are 0.2 % less.
    EXPECT_NEAR(level_amplitude(255 * 256), std::pow(10.0, 0.3), 1e-9);
    EXPECT_NEAR(level_amplitude(212 * 256) / level_amplitude(200 * 256), 1.9953, 1e-4);
    EXPECT_NEAR(pitch_hz(64 * 256), 100.0, 1e-9);
    for (unsigned byte = 1; byte < 256; byte++) {
        EXPECT_EQ(nearest_level(1.02 * level_amplitude(byte * 256)), byte);
        EXPECT_EQ(nearest_pitch(0.996 * pitch_hz(byte * 256)), byte);
    }
    // Between two steps lies the geometric mean.
    EXPECT_NEAR(level_amplitude(100 * 256 + 128) * level_amplitude(100 * 256 + 128),
                level_amplitude(100 * 256) * level_amplitude(101 * 256), 1e-3 * 7.5e-8);
    EXPECT_EQ(nearest_level(0.0), 0);
    EXPECT_EQ(nearest_level(100.0), 255);
}

} // namespace tarquil
