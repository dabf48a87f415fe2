// Tests of the lock that an audio thread may wait for.

#include "common/platform/lock.h"

#include <gtest/gtest.h>
#include <linux/futex.h>
#include <unistd.h>

#include <cstring>
#include <thread>

namespace tarquil {

namespace {

// The kernel's rule for mutexes that inherit priority: the futex word holds the owner's thread,
// where a plain mutex has 1 or 2.  It is what a mutex begins with.
uint32_t futex_word(const Lock& lock) {
    uint32_t word = 0;
    // NOLINTNEXTLINE(bugprone-undefined-memory-manipulation): looks at the kernel's side of it
    std::memcpy(&word, &lock, sizeof(word));
    return word;
}

TEST(Lock, AWaitingThreadLendsItsPriorityToTheHolder) {
    Lock lock;
    std::thread([&lock] {
        const LockHolder holder(lock);
        EXPECT_EQ(futex_word(lock) & FUTEX_TID_MASK, uint32_t(gettid()));
    }).join();
    EXPECT_EQ(futex_word(lock) & FUTEX_TID_MASK, 0U) << "given back";
}

TEST(Lock, IsTakenAgainByItsHolderAndKeptToTheEnd) {
    Lock lock;
    const LockHolder outer(lock);
    { const LockHolder inner(lock); }
    EXPECT_EQ(futex_word(lock) & FUTEX_TID_MASK, uint32_t(gettid()));
}

} // namespace

} // namespace tarquil
