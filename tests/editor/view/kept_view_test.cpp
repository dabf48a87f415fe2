// Tests of the whole editor with a document that is saved and opened.

#include "tests/editor/view/view_fixture.h"

namespace tarquil {

namespace {

// A file of which only the name is there.
class FakeDocument : public EditorDocument {
  public:
    [[nodiscard]] const std::string& path() const override { return file; }
    [[nodiscard]] bool is_changed() const override { return changed; }
    std::string save(const std::string& new_path) override {
        if (!problem.empty())
            return problem;
        file = new_path;
        changed = false;
        return "";
    }
    std::string open(const std::string& new_path) override { return save(new_path); }

    std::string file;
    std::string problem;
    bool changed = true;
};

class KeptViewTest : public EditorViewTest {
  protected:
    static KeyEvent control(const char* key, bool shift = false) {
        return {Key::CHARACTER, key, shift, true};
    }
    void press_in(Key key) { kept.key({key, "", false, false}); }
    void type_in(const std::string& text) {
        for (const char c : text)
            kept.key({Key::CHARACTER, std::string(1, c), false, false});
        press_in(Key::ENTER);
    }

    FakeDocument document;
    EditorView kept{model, settings, true, &document};
};

TEST_F(KeptViewTest, SaveAsksForANameOnceAndAFailureKeepsTheQuestionOpen) {
    EXPECT_TRUE(kept.key(control("s")));
    ASSERT_TRUE(kept.wants_keys()) << "it has no name yet";
    document.problem = directory.path("a.tqb") + ": cannot be written: no space left";
    type_in(directory.path("a"));
    EXPECT_TRUE(kept.wants_keys());
    document.problem.clear();
    press_in(Key::ENTER);
    EXPECT_FALSE(kept.wants_keys());
    EXPECT_EQ(document.file, directory.path("a.tqb"));
    document.changed = true;
    kept.key(control("s"));
    EXPECT_FALSE(document.changed);
    EXPECT_FALSE(kept.wants_keys());
    kept.key(control("s", true));
    EXPECT_TRUE(kept.wants_keys());
    draw();
}

TEST_F(KeptViewTest, ClosingAsksOnlyWhenSomethingWouldBeLost) {
    document.file = directory.path("a.tqb");
    document.changed = false;
    EXPECT_TRUE(kept.may_close());
    document.changed = true;
    EXPECT_FALSE(kept.may_close());
    EXPECT_FALSE(kept.may_close()) << "the question is there already";
    press_in(Key::ESCAPE);
    EXPECT_FALSE(kept.is_close_chosen());
    EXPECT_TRUE(document.changed);
    document.problem = "full";
    EXPECT_FALSE(kept.may_close());
    press_in(Key::ENTER);
    EXPECT_FALSE(kept.is_close_chosen()) << "what cannot be saved is not given up";
    document.problem.clear();
    EXPECT_FALSE(kept.may_close());
    press_in(Key::ENTER);
    EXPECT_TRUE(kept.is_close_chosen());
    EXPECT_FALSE(document.changed);
}

TEST_F(KeptViewTest, DiscardedEditsAreGoneAndOpeningAsksFirst) {
    document.file = directory.path("a.tqb");
    kept.key(control("o"));
    EXPECT_FALSE(kept.wants_keys()) << "a question";
    for (const Key key : {Key::RIGHT, Key::ENTER})
        press_in(key);
    ASSERT_TRUE(kept.wants_keys()) << "the file";
    type_in(directory.path("b.tqb"));
    EXPECT_EQ(document.file, directory.path("b.tqb"));
    document.changed = true;
    EXPECT_FALSE(kept.may_close());
    for (const Key key : {Key::RIGHT, Key::ENTER})
        press_in(key);
    EXPECT_TRUE(kept.is_close_chosen());
    EXPECT_TRUE(document.changed);
}

TEST_F(KeptViewTest, ControlPlusMinusAndZeroChangeTheSizeWithinTheScreen) {
    kept.set_scale_range({1.25, 1.6});
    for (const double scale : {1.25, 1.5, 1.6, 1.6}) {
        kept.key(control("+"));
        EXPECT_EQ(kept.scale(), scale);
    }
    EXPECT_TRUE(settings.is_scale_chosen);
    for (const double scale : {1.5, 1.25, 1.0, 0.75, 0.75}) {
        kept.key(control("-"));
        EXPECT_EQ(kept.scale(), scale);
    }
    kept.key(control("0"));
    EXPECT_EQ(kept.scale(), 1.25);
}

} // namespace

} // namespace tarquil
