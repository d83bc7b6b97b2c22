#pragma once

#include "base/event_loop.h"
#include "platform/music_library.h"

#include <functional>
#include <gmock/gmock.h>
#include <set>

namespace bridge {

// A library and what can be done to it from outside.
class MusicLibraryUnderTest {
public:
    virtual ~MusicLibraryUnderTest() = default;

    // Why there can be none on this machine; "" when there can.
    virtual std::string hindrance() const { return {}; }
    virtual EventLoop& loop() = 0;
    virtual MusicLibrary& library() = 0;
    // Returns when the library knows it.
    virtual void addSong(const std::string& title, const std::string& artist, const std::string& album) = 0;
    // Of the titles, in this order. Returns its id.
    virtual uint64_t addPlaylist(const std::string& name, const std::vector<std::string>& titles) = 0;
    virtual void removePlaylist(uint64_t id) = 0;
    // As after a new start of the computer.
    virtual void restart() = 0;
    virtual void breakDown() = 0;
    virtual void repair() = 0;
};

using MakeMusicLibrary = std::function<std::unique_ptr<MusicLibraryUnderTest>()>;

class MusicLibraryContract : public testing::TestWithParam<MakeMusicLibrary> {
protected:
    void SetUp() override {
        if (const auto reason = its->hindrance(); !reason.empty()) GTEST_SKIP() << reason;
    }
    std::shared_ptr<const MusicLibraryContents> contents() {
        return its->loop().runUntilDone(its->library().contents());
    }
    MusicItem song(const std::string& title) {
        for (const auto& item : contents()->items)
            if (item.title == title) return item;
        throw std::runtime_error("there is no song " + title);
    }

    std::unique_ptr<MusicLibraryUnderTest> its = GetParam()();
};
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(MusicLibraryContract);

TEST_P(MusicLibraryContract, HasNothingAtFirst) {
    EXPECT_THAT(contents()->items, testing::IsEmpty());
    EXPECT_THAT(contents()->playlists, testing::IsEmpty());
}

TEST_P(MusicLibraryContract, HasWhatWasAddedInEveryScript) {
    const std::vector<std::string> titles{"Harvest",  "Café \"Noir\"",      "春の海", "أغنية", "שיר",
                                          "😀 \\ 'x'", std::string(900, 'y')};
    for (const auto& title : titles)
        its->addSong(title, "Ana " + title, "Nights");
    std::set<uint64_t> ids;
    for (const auto& title : titles) {
        const auto item = song(title);
        EXPECT_EQ(item.artist, "Ana " + title);
        EXPECT_EQ(item.album, "Nights");
        EXPECT_EQ(item.kind, MusicItemKind::song);
        ids.insert(item.persistentID);
    }
    EXPECT_EQ(ids.size(), titles.size());
}

TEST_P(MusicLibraryContract, IsTheSameObjectUntilItChanges) {
    its->addSong("One", "", "");
    const auto before = contents();
    EXPECT_EQ(contents(), before);
    its->addSong("Two", "", "");
    const auto after = contents();
    EXPECT_NE(after, before);
    EXPECT_EQ(before->items.size(), 1u);
    EXPECT_EQ(after->items.size(), 2u);
    its->addPlaylist("Trip", {"One"});
    EXPECT_NE(contents(), after);
}

TEST_P(MusicLibraryContract, HasPlaylistsInTheirOrderWithRepetitions) {
    its->addSong("One", "", "");
    its->addSong("Two", "", "");
    const auto trip = its->addPlaylist("Trip \"😀\"", {"Two", "One", "Two"});
    const auto one = song("One").persistentID, two = song("Two").persistentID;
    EXPECT_THAT(contents()->playlists, testing::ElementsAre(MusicPlaylist{trip, "Trip \"😀\"", {two, one, two}}));
    its->removePlaylist(trip);
    EXPECT_THAT(contents()->playlists, testing::IsEmpty());
}

TEST_P(MusicLibraryContract, KeepsItsIDsOverARestart) {
    its->addSong("One", "Ana", "Nights");
    its->addPlaylist("Trip", {"One"});
    const auto before = *contents();
    its->restart();
    EXPECT_EQ(contents()->items, before.items);
    EXPECT_EQ(contents()->playlists, before.playlists);
}

TEST_P(MusicLibraryContract, FailsRatherThanBeEmpty) {
    its->addSong("One", "", "");
    its->breakDown();
    EXPECT_THROW(contents(), PlatformError);
    its->repair();
    EXPECT_EQ(contents()->items.size(), 1u);
}

TEST_P(MusicLibraryContract, MayBeDroppedWhileItIsRead) {
    its->addSong("One", "", "");
    {
        auto dropped = its->library().contents();
        dropped.start();
    }
    EXPECT_EQ(contents()->items.size(), 1u);
}

TEST_P(MusicLibraryContract, IsReadByManyAtOnce) {
    its->addSong("One", "", "");
    std::vector<Task<std::shared_ptr<const MusicLibraryContents>>> tasks;
    for (int reader = 0; reader < 20; ++reader)
        tasks.push_back(its->library().contents());
    for (auto& task : tasks)
        task.start();
    for (auto& task : tasks) {
        while (!task.done())
            its->loop().waitOnce();
        EXPECT_EQ(task.take()->items.size(), 1u);
    }
}

} // namespace bridge
