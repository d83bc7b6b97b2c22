#include "adapters/applescript/applescript_engine.h"
#include "tests/adapters/iworkapps/scripted_office.h"

#include <optional>

namespace bridge::iworkapps {

using office::FakeOffice;

class OfficeEngine : public testing::Test {
protected:
    // Returns once the office program hangs, which the caller has told it to do.
    Task<TypedAppleScriptValue> runUntilItHangs(const std::string& source) {
        office.onHang = [this] { loop.post([this] { loop.stop(); }); };
        auto task = engine.run(source);
        task.start();
        loop.run();
        return task;
    }

    EventLoop loop;
    FakeOffice office;
    OfficeSession session{office};
    AppleScriptEngine engine{loop, officeApplications(session)};
};

TEST_F(OfficeEngine, StartsTheOfficeProgramWithTheFirstDocument) {
    EXPECT_FALSE(engine.isRunning("Numbers"));
    loop.runUntilDone(engine.run("tell application \"Numbers\" to get name"));
    EXPECT_FALSE(engine.isRunning("Numbers"));
    loop.runUntilDone(engine.run(createPages("/l.pages", "x")));
    EXPECT_TRUE(engine.isRunning("Pages"));
}

TEST_F(OfficeEngine, RunsScriptsOfAllThreeApplicationsAtOnce) {
    std::vector<Task<TypedAppleScriptValue>> tasks;
    for (int script = 0; script < 20; ++script) {
        const auto name = '/' + std::to_string(script);
        tasks.push_back(engine.run(createPages(name + ".pages", "x")));
        tasks.push_back(engine.run(createNumbers(name + ".numbers", 1, 1, {setCell("A1", "\"x\"")})));
        tasks.push_back(engine.run(createKeynote(name + ".key", {{"One"}, {"Two"}})));
    }
    for (auto& task : tasks)
        task.start();
    for (auto& task : tasks) {
        while (!task.done())
            loop.waitOnce();
        task.take();
    }
    EXPECT_EQ(office.files.size(), 60U);
    EXPECT_FALSE(office.wasAskedTwiceAtOnce);
}

TEST_F(OfficeEngine, TakesDocumentsOfTwoApplicationsInOneScript) {
    const auto copied = loop.runUntilDone(engine.run("tell application \"Pages\"\n"
                                                     "set theText to body text of (make new document with properties "
                                                     "{body text:\"from Pages\"})\n"
                                                     "end tell\n"
                                                     "tell application \"Numbers\"\n"
                                                     "tell table 1 of sheet 1 of (make new document)\n"
                                                     "set value of cell \"A1\" to theText\n"
                                                     "value of cell \"A1\"\n"
                                                     "end tell\n"
                                                     "end tell"));
    EXPECT_EQ(copied.stringValue, "from Pages");
    EXPECT_EQ(office.openDocuments(), 0U);
    EXPECT_EQ(office.closedAll, 1);
}

TEST_F(OfficeEngine, IsThereForOthersWhenAScriptIsGivenUp) {
    office.hangAt("setBodyText", 1);
    {
        const auto dropped = runUntilItHangs(createPages("/l.pages", "x"));
        EXPECT_FALSE(dropped.done());
    }
    loop.runUntilDone(engine.run(createNumbers("/p.numbers", 1, 1, {setCell("A1", "\"x\"")})));
    EXPECT_TRUE(office.files.contains("/p.numbers"));
    EXPECT_FALSE(office.files.contains("/l.pages"));
    EXPECT_FALSE(office.wasAskedTwiceAtOnce);
}

TEST_F(OfficeEngine, EndsWhileTheOfficeProgramHangs) {
    office.hangAt("create", 1);
    std::optional<AppleScriptEngine> other;
    other.emplace(loop, officeApplications(session));
    office.onHang = [this] { loop.post([this] { loop.stop(); }); };
    auto task = other->run(createPages("/l.pages", "x"));
    task.start();
    loop.run();
    other.reset();
    EXPECT_EQ(office.closedAll, 1);
}

} // namespace bridge::iworkapps
