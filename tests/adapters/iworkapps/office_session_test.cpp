#include "adapters/iworkapps/numbers_application.h"
#include "adapters/iworkapps/pages_application.h"
#include "tests/adapters/iworkapps/office_script.h"

#include <future>
#include <thread>

namespace bridge::iworkapps {

using office::FakeOffice;

namespace {

const Command makeDocument{.name = "make", .direct = {}, .parameters = {{"new", ClassName{"document"}}}};

ObjectPointer made(OfficeApplication& application, ScriptCall& call) {
    return std::get<ObjectPointer>(application.perform(makeDocument, call));
}

} // namespace

class Session : public testing::Test {
protected:
    FakeOffice office;
    OfficeSession session{office};
    PagesApplication pages{session};
    NumbersApplication numbers{session};
};

TEST_F(Session, IsOfOneScriptWithAllItsApplications) {
    ScriptCall call;
    made(pages, call);
    made(numbers, call);
    pages.scriptEnded();
    EXPECT_EQ(office.openDocuments(), 2U);
    numbers.scriptEnded();
    EXPECT_EQ(office.openDocuments(), 0U);
}

TEST_F(Session, LetsOtherScriptsWaitAsLongAsTheyHaveTime) {
    ScriptCall first, second;
    made(pages, first);
    ScriptCall::Limit limit(second, std::chrono::milliseconds(1));
    EXPECT_EQ(refusalOf([&] { made(numbers, second); }).number, ScriptError::timedOut);
    numbers.scriptEnded();
    EXPECT_EQ(office.openDocuments(), 1U);
    pages.scriptEnded();
}

TEST_F(Session, LetsGoOfAScriptThatIsGivenUpWhileItWaits) {
    ScriptCall first, second;
    made(pages, first);
    auto waiting = std::async(std::launch::async, [&] { return refusalOf([&] { made(numbers, second); }); });
    second.cancel();
    EXPECT_EQ(waiting.get().number, ScriptError::timedOut);
    numbers.scriptEnded();
    pages.scriptEnded();
}

TEST_F(Session, IsTheNextScriptsWhenTheFirstHasEnded) {
    ScriptCall first;
    const auto letter = made(pages, first);
    std::thread other([&] {
        ScriptCall second;
        made(numbers, second);
        numbers.scriptEnded();
    });
    letter->setProperty("body text", std::string("x"), first);
    EXPECT_EQ(office.count("create"), 1U);
    EXPECT_EQ(letter->property("body text", first), Value(std::string("x")));
    pages.scriptEnded();
    other.join();
    EXPECT_EQ(office.count("create"), 2U);
    EXPECT_FALSE(office.wasAskedTwiceAtOnce);
}

TEST_F(Session, LastsThroughManyScriptsAtOnce) {
    const auto run = [](OfficeApplication& application) {
        for (int script = 0; script < 50; ++script) {
            ScriptCall call;
            for (int document = 0; document < 3; ++document)
                made(application, call);
            application.scriptEnded();
        }
    };
    std::thread other([&] { run(numbers); });
    run(pages);
    other.join();
    EXPECT_FALSE(office.wasAskedTwiceAtOnce);
    EXPECT_EQ(office.count("create"), 300U);
    EXPECT_EQ(office.closedAll, 100);
}

TEST_F(Session, IsFreeAfterAScriptWhoseOfficeProgramHung) {
    ScriptCall first;
    const auto letter = made(pages, first);
    office.hangAt("setBodyText", 1);
    {
        ScriptCall::Limit limit(first, std::chrono::milliseconds(1));
        EXPECT_EQ(refusalOf([&] { letter->setProperty("body text", std::string("x"), first); }).number,
                  ScriptError::timedOut);
    }
    pages.scriptEnded();
    ScriptCall second;
    made(numbers, second);
    EXPECT_EQ(office.openDocuments(), 1U);
    numbers.scriptEnded();
}

TEST_F(Session, IsNotNeededByScriptsThatOnlyTalk) {
    ScriptCall first, second;
    made(pages, first);
    EXPECT_EQ(numbers.property("name", second), Value(std::string("Numbers")));
    EXPECT_TRUE(numbers.elements("document", second).empty());
    numbers.scriptEnded();
    EXPECT_EQ(office.openDocuments(), 1U);
    pages.scriptEnded();
}

} // namespace bridge::iworkapps
