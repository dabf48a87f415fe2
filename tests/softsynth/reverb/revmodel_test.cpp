// The reverb's two ways to put out; its sound is a golden scene, its memory in
// core/silence_test.cpp.

#include "softsynth/reverb/revmodel.h"

#include <gtest/gtest.h>

#include <memory>

#include "tests/softsynth/signal/noise.h"

namespace tarquil {

namespace {

TEST(Reverb, ReplacesOrAddsTheSameSound) {
    const std::vector<float> in = noise(8192);
    std::vector<float> added(in.size());
    std::vector<float> replaced(in.size(), 5.0F);
    for (std::vector<float>* out : {&added, &replaced}) {
        const auto reverb = std::make_unique<revmodel>();
        reverb->setwidth(0.3F);
        reverb->update();
        if (out == &added)
            reverb->processmix(in.data(), out->data(), 4096);
        else
            reverb->processreplace(in.data(), out->data(), 4096);
    }
    EXPECT_EQ(added, replaced);
    EXPECT_NE(added, std::vector<float>(in.size()));
}

} // namespace

} // namespace tarquil
