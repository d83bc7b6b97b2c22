#pragma once

#include "base/event_loop.h"
#include "platform/folder_chooser.h"
#include "tests/support/temporary_folder.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>

// What every adapter of FolderChooser keeps. Instantiate FolderChooserContract with a maker of the adapter and its
// user.

namespace bridge {

// A chooser and the one who sits before it.
class FolderChooserUnderTest {
public:
    virtual ~FolderChooserUnderTest() = default;
    // Why it can't be tried on this machine.
    virtual std::string hindrance() { return {}; }
    virtual FolderChooser& chooser() = 0;
    // Lets everything happen until the condition holds; false when it has not in half a minute.
    virtual bool comesTrue(const std::function<bool()>& condition) = 0;

    // The dialog that the user has before him.
    virtual bool isOpen() = 0;
    virtual std::string title() = 0;     // all that its title says
    virtual std::string shownText() = 0; // all that it says, the title included
    virtual std::string confirmLabel() = 0;
    virtual void choose(const std::filesystem::path& folder) = 0;
    virtual void cancel() = 0;
};

using MakeFolderChooser = std::function<std::unique_ptr<FolderChooserUnderTest>()>;

class FolderChooserContract : public testing::TestWithParam<MakeFolderChooser> {
protected:
    void SetUp() override {
        if (const auto hindrance = setting->hindrance(); !hindrance.empty()) GTEST_SKIP() << hindrance;
    }
    void ask() {
        task.emplace(setting->chooser().choose(question));
        task->start();
        ASSERT_TRUE(setting->comesTrue([this] { return setting->isOpen() || task->done(); }));
        ASSERT_FALSE(task->done());
    }
    std::optional<std::string> answer() {
        if (!setting->comesTrue([this] { return task->done(); })) throw std::runtime_error("there is no answer");
        return task->take();
    }

    const FolderQuestion question{"Choose a folder", "Only what is in it.", "Take it"};
    TemporaryFolder home;
    std::unique_ptr<FolderChooserUnderTest> setting = GetParam()();
    std::optional<Task<std::optional<std::string>>> task;
};
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(FolderChooserContract);

TEST_P(FolderChooserContract, AnswersTheChosenFolder) {
    std::filesystem::create_directory(home / "Documents");
    ask();
    setting->choose(home / "Documents");
    EXPECT_EQ(answer(), home.file("Documents"));
}

TEST_P(FolderChooserContract, AnswersNothingWhenTheUserCancels) {
    ask();
    setting->cancel();
    EXPECT_EQ(answer(), std::nullopt);
}

TEST_P(FolderChooserContract, SaysWhatItIsAsked) {
    ask();
    EXPECT_EQ(setting->title().find("Choose a folder"), 0u);
    EXPECT_NE(setting->shownText().find("Only what is in it."), std::string::npos);
    EXPECT_EQ(setting->confirmLabel(), "Take it");
}

TEST_P(FolderChooserContract, KeepsOddNames) {
    for (const std::string name : {"with space", "100%25", "a#b?c", "Zo\xc3\xab \xf0\x9f\x90\xb1", "semi;colon&"}) {
        std::filesystem::create_directory(home / name);
        ask();
        setting->choose(home / name);
        EXPECT_EQ(answer(), home.file(name));
    }
}

TEST_P(FolderChooserContract, CanBeAskedAgain) {
    ask();
    setting->cancel();
    EXPECT_EQ(answer(), std::nullopt);
    ask();
    setting->choose(home.path());
    EXPECT_EQ(answer(), home.path().string());
}

TEST_P(FolderChooserContract, TakesTheDialogAwayWhenNobodyWaitsAnyMore) {
    ask();
    task.reset();
    EXPECT_TRUE(setting->comesTrue([this] { return !setting->isOpen(); }));
}

} // namespace bridge
