// Tests of what one session leaves to the next.

#include "standalone/session_backup.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/temp_directory.h"

namespace tarquil {

namespace {

class SessionBackupTest : public testing::Test {
  protected:
    std::unique_ptr<SessionBackup> start() {
        return std::make_unique<SessionBackup>(directory.path("state/tarquil"));
    }
    // Begins, keeps and ends as a crash does.
    void lose(const std::string& text, const std::string& path) {
        const auto session = start();
        ASSERT_FALSE(session->lost());
        ASSERT_EQ(session->keep(text, path), "");
    }

    TempDirectory directory;
};

TEST_F(SessionBackupTest, TheNextSessionFindsWhatACrashLeft) {
    EXPECT_FALSE(start()->lost());
    lose("a = 1\n", "/home/x/my bank.tqb");
    auto next = start();
    ASSERT_TRUE(next->lost());
    EXPECT_TRUE(next->lost()->text.ends_with("\na = 1\n"));
    EXPECT_EQ(next->lost()->path, "/home/x/my bank.tqb");
    next.reset(); // without an answer
    next = start();
    ASSERT_TRUE(next->lost());
    next->take_over();
    EXPECT_FALSE(next->lost());
    next.reset(); // a crash before anything was edited
    next = start();
    ASSERT_TRUE(next->lost()) << "it is still in no file";
    next->take_over();
    next->discard();
    EXPECT_FALSE(start()->lost());
}

TEST_F(SessionBackupTest, SessionsAtTheSameTimeKeepTheirOwn) {
    auto one = start();
    auto other = start();
    EXPECT_EQ(one->keep("one", ""), "");
    EXPECT_EQ(other->keep("other", ""), "");
    EXPECT_FALSE(start()->lost()) << "both are there";
    one.reset();
    const auto third = start();
    ASSERT_TRUE(third->lost());
    EXPECT_TRUE(third->lost()->text.ends_with("one"));
    other->discard();
    other.reset();
    EXPECT_FALSE(start()->lost());
}

TEST_F(SessionBackupTest, WhatIsLeftForLaterStaysBesideWhatIsKeptNow) {
    lose("early", "");
    auto session = start();
    session->leave();
    EXPECT_EQ(session->keep("late", ""), "");
    session->discard();
    EXPECT_EQ(session->keep("later", ""), "");
    session.reset();
    session = start();
    ASSERT_TRUE(session->lost());
    EXPECT_TRUE(session->lost()->text.ends_with("early"));
    session->take_over();
    session->discard();
    const auto next = start();
    ASSERT_TRUE(next->lost());
    EXPECT_TRUE(next->lost()->text.ends_with("later"));
}

TEST_F(SessionBackupTest, AFolderThatCannotBeMadeIsSaidWhenItIsNeeded) {
    SessionBackup session("/dev/null/tarquil");
    EXPECT_FALSE(session.lost());
    EXPECT_NE(session.keep("text", ""), "");
    EXPECT_FALSE(session.has_kept());
    session.discard();
}

} // namespace

} // namespace tarquil
