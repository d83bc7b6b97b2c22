#include "tests/adapters/sqlite/other_program.h"

#include "adapters/sqlite/database.h"
#include "tests/adapters/sqlite/store_test.h"

#include <sys/resource.h>

namespace bridge {
namespace {

class OtherProgramTest : public SqliteStoreTest {
protected:
    // Nobody is to be turned away, however slow the machine is.
    OtherProgramTest() {
        options.busyTimeout = std::chrono::minutes(4);
        reopen();
    }
    // Of a length of its own, so that one that was written by halves would show.
    CalendarEvent numbered(const std::string& calendar, int number) const {
        auto event = sowing(calendar);
        event.title = "Event " + std::to_string(number);
        event.notes = std::string(static_cast<size_t>(number % 50) * 200, 'n') + std::to_string(number);
        return event;
    }
    std::string integrity() {
        return Database(path, "calendars", {}).value<std::string>("PRAGMA integrity_check").value_or("");
    }
};

class KilledStoreTest : public OtherProgramTest, public testing::WithParamInterface<int> {};

TEST_P(KilledStoreTest, HasEveryEventThatItAnswered) {
    const auto calendar = defaultCalendar().id;
    store.reset();
    OtherProgram writer([&](const OtherProgram::Tell& tell) {
        reopen();
        for (int number = 0; number < 1000; ++number)
            tell(wait(store->saveEvent(numbered(calendar, number))).identifier);
    });
    std::vector<std::string> answered;
    for (int count = 0; count < GetParam(); ++count)
        answered.push_back(writer.line());
    writer.kill();
    for (auto line = writer.line(); line.size() == 36; line = writer.line())
        answered.push_back(line);

    reopen();
    EXPECT_EQ(integrity(), "ok");
    for (size_t number = 0; number < answered.size(); ++number) {
        const auto item = wait(store->item(answered[number]));
        ASSERT_TRUE(item) << number;
        auto expected = numbered(calendar, static_cast<int>(number));
        const auto& event = std::get<CalendarEvent>(*item);
        expected.identifier = answered[number];
        expected.externalIdentifier = event.externalIdentifier;
        ASSERT_EQ(event, expected) << number;
    }
    // One more may have been written and not been told.
    const auto all = allEvents();
    EXPECT_GE(all.size(), answered.size());
    EXPECT_LE(all.size(), answered.size() + 1);
    wait(store->saveEvent(numbered(calendar, 1000)));
    EXPECT_EQ(allEvents().size(), all.size() + 1);
}

INSTANTIATE_TEST_SUITE_P(Counts, KilledStoreTest, testing::Values(1, 2, 17, 100, 333, 999));

TEST_F(OtherProgramTest, TwoThatWriteAtOnceLoseNothing) {
    const auto calendar = defaultCalendar().id;
    store.reset();
    OtherProgram writer([&](const OtherProgram::Tell& tell) {
        reopen();
        for (int number = 0; number < 200; ++number) {
            wait(store->saveEvent(numbered(calendar, number)));
            if (number == 0) tell("begun");
        }
        tell("done");
    });
    reopen();
    EXPECT_EQ(writer.line(), "begun");
    for (int number = 200; number < 400; ++number)
        wait(store->saveEvent(numbered(calendar, number)));
    EXPECT_EQ(writer.line(), "done");
    EXPECT_EQ(writer.end(), 0);
    EXPECT_EQ(allEvents().size(), 400u);
    EXPECT_EQ(integrity(), "ok");
}

TEST_F(OtherProgramTest, WhatAnotherProgramWritesIsFoundAtOnce) {
    const auto calendar = defaultCalendar().id;
    store.reset();
    int written = 0;
    {
        OtherProgram writer([&](const OtherProgram::Tell& tell) {
            reopen();
            for (int number = 0; number < 20; ++number) {
                wait(store->saveEvent(numbered(calendar, number)));
                tell(std::to_string(number));
            }
        });
        reopen();
        for (auto line = writer.line(); !line.empty(); line = writer.line()) {
            EXPECT_EQ(line, std::to_string(written));
            ++written;
            EXPECT_GE(allEvents().size(), static_cast<size_t>(written));
        }
        EXPECT_EQ(writer.end(), 0);
    }
    EXPECT_EQ(written, 20);
    EXPECT_EQ(allEvents().size(), 20u);
}

TEST_F(OtherProgramTest, SeveralThatBeginAtOnceBeginOneStore) {
    store.reset();
    const auto begin = [&](const OtherProgram::Tell& tell) {
        reopen();
        tell(defaultCalendar().id);
        store.reset();
    };
    OtherProgram first(begin);
    OtherProgram second(begin);
    OtherProgram third(begin);
    const auto calendar = first.line();
    EXPECT_EQ(calendar.size(), 36u) << calendar;
    EXPECT_EQ(second.line(), calendar);
    EXPECT_EQ(third.line(), calendar);
    for (auto* program : {&first, &second, &third})
        EXPECT_EQ(program->end(), 0);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1) << "of the files";
}

TEST_F(OtherProgramTest, ADiskThatIsFullRefusesAndWorksAgainWhenThereIsRoom) {
    const auto calendar = defaultCalendar().id;
    store.reset();
    OtherProgram writer([&](const OtherProgram::Tell& tell) {
        signal(SIGXFSZ, SIG_IGN);
        reopen();
        wait(store->saveEvent(numbered(calendar, 0)));
        // What a full disk is to the one file that grows.
        rlimit limit{};
        getrlimit(RLIMIT_FSIZE, &limit);
        const auto before = limit.rlim_cur;
        limit.rlim_cur = 300'000;
        setrlimit(RLIMIT_FSIZE, &limit);
        int saved = 1;
        std::string failure;
        while (failure.empty()) {
            failure = failureOf([&] { wait(store->saveEvent(numbered(calendar, 49))); });
            if (failure.empty()) ++saved;
        }
        tell(failure);
        tell(std::to_string(saved));
        tell(std::to_string(allEvents().size()));
        tell(failureOf([&] { wait(store->addCalendar(EntityType::event, account().id, std::string(300'000, 'x'))); }));
        limit.rlim_cur = before;
        setrlimit(RLIMIT_FSIZE, &limit);
        wait(store->saveEvent(numbered(calendar, 0)));
        tell(std::to_string(allEvents().size()));
    });
    EXPECT_EQ(writer.line(), "The calendars on this computer can't be saved: the disk is full.");
    const auto saved = writer.line();
    EXPECT_GT(std::stoi(saved), 1);
    EXPECT_EQ(writer.line(), saved);
    EXPECT_EQ(writer.line(), "The calendars on this computer can't be saved: the disk is full.");
    EXPECT_EQ(writer.line(), std::to_string(std::stoi(saved) + 1));
    EXPECT_EQ(writer.end(), 0);
    reopen();
    EXPECT_EQ(allEvents().size(), static_cast<size_t>(std::stoi(saved)) + 1);
    EXPECT_EQ(integrity(), "ok");
}

} // namespace
} // namespace bridge
