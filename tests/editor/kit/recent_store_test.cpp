// Tests of the store of what is used again.

#include "editor/kit/recent_store.h"

#include <gtest/gtest.h>

#include <memory>

namespace tarquil {

namespace {

constexpr size_t LIMIT = 100;
constexpr size_t BYTES = 10;

class RecentStoreTest : public testing::Test {
  protected:
    RecentStoreTest() { store.set_limit(LIMIT); }

    // True when it was there.
    bool use(int key) {
        if (const std::unique_ptr<int>* found = store.find(key)) {
            EXPECT_EQ(**found, key);
            return true;
        }
        EXPECT_EQ(*store.add(key, std::make_unique<int>(key), BYTES), key);
        return false;
    }

    RecentStore<int, std::unique_ptr<int>, std::hash<int>> store;
};

TEST_F(RecentStoreTest, WhatIsUsedStaysAndTheRestGoesBeforeTheLimit) {
    use(-1);
    for (int key = 0; key < 1000; key++) {
        EXPECT_FALSE(use(key));
        EXPECT_TRUE(use(-1)) << "after " << key;
        EXPECT_LE(store.bytes(), LIMIT);
    }
    EXPECT_TRUE(use(999));
    EXPECT_FALSE(use(900));
}

TEST_F(RecentStoreTest, WhatIsLargerThanTheLimitIsKeptUntilTheNext) {
    store.add(1, std::make_unique<int>(1), 2 * LIMIT);
    EXPECT_TRUE(use(1));
    for (int key = 2; key < 20; key++)
        use(key);
    EXPECT_FALSE(use(1));
    EXPECT_LE(store.bytes(), LIMIT);
}

} // namespace

} // namespace tarquil
