// Tests of keys that are held on a window system that repeats them.

#include "editor/kit/key_repeat.h"

#include <gtest/gtest.h>

namespace tarquil {

namespace {

class KeyRepeatTest : public testing::Test {
  protected:
    bool press(uint32_t code, uint32_t time) {
        return keys.press(code, time, [this](uint32_t key) { let_go.push_back(key); });
    }
    void look() {
        keys.look([this](uint32_t key) { let_go.push_back(key); });
    }

    KeyRepeat keys;
    std::vector<uint32_t> let_go;
};

TEST_F(KeyRepeatTest, AHeldKeyIsOnePressHoweverItsRepeatsAreRead) {
    EXPECT_TRUE(press(38, 1000));
    for (uint32_t time = 1500; time < 2500; time += 40) {
        keys.release(38, time);
        if (time % 80 == 0)
            look(); // between the two events of a repeat
        EXPECT_FALSE(press(38, time));
        look();
        look();
    }
    EXPECT_TRUE(let_go.empty());
    keys.release(38, 2600);
    look();
    look();
    look();
    EXPECT_EQ(let_go, std::vector<uint32_t>{38});
}

TEST_F(KeyRepeatTest, AKeyThatIsStruckAgainBeforeItsEndWasToldEndsFirst) {
    EXPECT_TRUE(press(38, 1000));
    EXPECT_TRUE(press(39, 1005));
    keys.release(38, 1010);
    EXPECT_TRUE(press(38, 1030));
    EXPECT_EQ(let_go, std::vector<uint32_t>{38});
    look();
    look();
    EXPECT_EQ(let_go.size(), 1U) << "the second press is held";
}

} // namespace

} // namespace tarquil
