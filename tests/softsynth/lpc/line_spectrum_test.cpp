// Line spectral pairs, predictors and reflection coefficients.

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/softsynth/lpc/speech_samples.h"

namespace tarquil {

TEST(LineSpectrum, LinesComeBackFromTheirPredictor) {
    for (const SpeechFrame& frame : random_speech(500, 11).frames) {
        const LineCosines cosines = line_cosines(frame.lines);
        const auto found = lines_of_predictor(predictor_of_lines(cosines));
        ASSERT_TRUE(found);
        for (size_t i = 0; i < LPC_ORDER; i++) {
            // An eighth of a byte's step.
            EXPECT_NEAR(std::acos((*found)[i]), std::acos(cosines[i]), PI / 2048);
        }
    }
}

TEST(LineSpectrum, PredictorOutsideTheUnitCircleHasNoLines) {
    Predictor predictor{1.0};
    predictor[1] = -2.5;
    EXPECT_FALSE(lines_of_predictor(predictor));
}

TEST(LineSpectrum, AnyLinesGiveReflectionsWithinTheUnitCircle) {
    // Ten lines as near to each other as a frame may have them.
    for (int lowest = 0; lowest + 9 * MIN_LINE_DISTANCE <= 255; lowest++) {
        SpeechFrame frame;
        for (size_t i = 0; i < LPC_ORDER; i++)
            frame.lines[i] = uint8_t(lowest + int(i) * MIN_LINE_DISTANCE);
        for (const double k :
             reflections_of_predictor(predictor_of_lines(line_cosines(frame.lines))))
            ASSERT_LT(std::fabs(k), 1.0) << "from " << lowest;
    }
}

} // namespace tarquil
