#include "adapters/iworkapps/pages_application.h"
#include "tests/adapters/iworkapps/office_script.h"

namespace bridge::iworkapps {

using office::FakeOffice;
using Documents = OfficeScript<PagesApplication>;

namespace {

FakeOffice::Content letter(const std::string& body) {
    auto content = FakeOffice::emptyContent(DocumentKind::text);
    content.body = body;
    return content;
}

Record recordOf(std::vector<std::pair<std::string, Value>> properties) {
    return std::make_shared<std::vector<std::pair<std::string, Value>>>(std::move(properties));
}

} // namespace

TEST_F(Documents, AreMadeWrittenAndSaved) {
    const auto document = make("document");
    set(document, "body text", std::string("Dear\rall,"));
    perform("save", document, {{"in", File{"/home/letter.pages"}}});
    perform("close", document, {{"saving", yes()}});

    EXPECT_EQ(office.files.at("/home/letter.pages").body, "Dear\nall,");
    EXPECT_EQ(office.calls, (std::vector<std::string>{"create", "setBodyText", "saveAs", "close"}));
}

TEST_F(Documents, AreReadFromFiles) {
    office.files.emplace("/a b/l\"etter.pages", letter("Öäü 🎈"));
    const auto document = open("/a b/l\"etter.pages");
    EXPECT_EQ(get(document, "body text"), Value(std::string("Öäü 🎈")));
    EXPECT_EQ(get(document, "name"), Value(std::string("l\"etter.pages")));
    EXPECT_EQ(get(document, "file"), Value(File{"/a b/l\"etter.pages"}));
    EXPECT_EQ(get(document, "modified"), Value(false));
    perform("close", document, {{"saving", no()}});
    EXPECT_EQ(office.openDocuments(), 0U);
}

TEST_F(Documents, CanBeMadeWithABodyTextFromTheTemplate) {
    const auto blank = at(ObjectPointer(&application, [](auto*) {}), "template", 1);
    const auto properties = recordOf({{"document template", blank}, {"body text", std::string("x")}});
    const auto document = make("document", {{"with properties", properties}});
    EXPECT_EQ(get(document, "body text"), Value(std::string("x")));
}

TEST_F(Documents, AreNotMadeFromAnythingElse) {
    const auto properties = recordOf({{"document template", std::string("Report")}});
    EXPECT_EQ(refusalOf([&] {
                  make("document", {{"with properties", properties}});
              }),
              (Refusal{-1700, "Can’t make \"Report\" into type template."}));
    EXPECT_TRUE(office.calls.empty());
}

TEST_F(Documents, AreClosedWithSavingOnlyIfTheyChanged) {
    office.files.emplace("/l.pages", letter("a"));
    const auto document = open("/l.pages");
    set(document, "body text", std::string("b"));
    perform("close", document, {{"saving", yes()}});
    EXPECT_EQ(office.files.at("/l.pages").body, "b");
    perform("close", open("/l.pages"), {{"saving", yes()}});
    EXPECT_EQ(office.count("save"), 1U);
}

TEST_F(Documents, AreClosedInAFile) {
    const auto document = make("document");
    perform("close", document, {{"saving in", File{"/new.pages"}}});
    EXPECT_TRUE(office.files.contains("/new.pages"));
}

TEST_F(Documents, ForgetChangesWhenTheyAreClosedWithoutSaving) {
    office.files.emplace("/l.pages", letter("a"));
    const auto document = open("/l.pages");
    set(document, "body text", std::string("b"));
    perform("close", document, {{"saving", no()}});
    EXPECT_EQ(office.files.at("/l.pages").body, "a");
}

TEST_F(Documents, WithoutAFileNeedOneToBeSaved) {
    const auto document = make("document");
    const auto refusal =
        Refusal{-10000, "Can’t save document \"Untitled\": it was never saved, so it needs a file to be saved in."};
    EXPECT_EQ(refusalOf([&] { perform("close", document, {{"saving", yes()}}); }), refusal);
    EXPECT_EQ(refusalOf([&] { perform("save", document); }), refusal);
    EXPECT_EQ(office.openDocuments(), 1U);
    perform("close", document, {{"saving", no()}});
}

TEST_F(Documents, WithChangesAreNotClosedWithoutAWordOnSaving) {
    const auto document = make("document");
    set(document, "body text", std::string("b"));
    const auto refusal = refusalOf([&] { perform("close", document); });
    EXPECT_EQ(refusal.number, -1713);
    EXPECT_EQ(refusalOf([&] { perform("quit", std::nullopt); }), refusal);
    perform("quit", std::nullopt, {{"saving", no()}});
    EXPECT_EQ(office.openDocuments(), 0U);
}

TEST_F(Documents, AreSavedWhereTheyLieUnlessToldOtherwise) {
    office.files.emplace("/l.pages", letter("a"));
    const auto document = open("/l.pages");
    set(document, "body text", std::string("b"));
    perform("save", document);
    set(document, "body text", std::string("c"));
    perform("save", document, {{"in", File{"/other.pages"}}});
    EXPECT_EQ(office.files.at("/l.pages").body, "b");
    EXPECT_EQ(office.files.at("/other.pages").body, "c");
    EXPECT_EQ(get(document, "name"), Value(std::string("other.pages")));
    perform("save", document, {{"in", File{"/other.pages"}}});
    EXPECT_EQ(refusalOf([&] { perform("save", document, {{"in", File{"/l.pages"}}}); }).number, -48);
}

TEST_F(Documents, StayChangedWhenSavingFails) {
    const auto document = make("document");
    set(document, "body text", std::string("b"));
    office.failAt("saveAs", 1, ScriptError(-34, "The disk is full."));
    EXPECT_EQ(refusalOf([&] {
                  perform("save", document, {{"in", File{"/l.pages"}}});
              }),
              (Refusal{-34, "The disk is full."}));
    EXPECT_EQ(get(document, "modified"), Value(true));
    EXPECT_EQ(get(document, "file"), Value(MissingValue{}));
}

TEST_F(Documents, AreListedFromFrontToBack) {
    office.files.emplace("/a.pages", letter(""));
    const auto first = open("/a.pages");
    const auto second = make("document");
    const auto third = make("document");
    EXPECT_EQ(application.elements("document", call), (std::vector<ObjectPointer>{third, second, first}));
    EXPECT_EQ(application.elementNamed("document", "Untitled 2", call), third);
    EXPECT_EQ(application.elementWithID("document", get(second, "id"), call), second);
    EXPECT_EQ(application.elementNamed("document", "b.pages", call), nullptr);
}

TEST_F(Documents, AreOpenedOnce) {
    office.files.emplace("/a.pages", letter(""));
    EXPECT_EQ(open("/a.pages"), open("/a.pages"));
    EXPECT_EQ(office.count("open"), 1U);
}

TEST_F(Documents, AreGoneWhenTheyWereClosed) {
    office.files.emplace("/a.pages", letter(""));
    const auto document = open("/a.pages");
    perform("close", document, {{"saving", no()}});
    const Refusal gone{-1728, "Can’t get document \"a.pages\"."};
    EXPECT_EQ(refusalOf([&] { get(document, "body text"); }), gone);
    EXPECT_EQ(refusalOf([&] { get(document, "name"); }), gone);
    EXPECT_EQ(refusalOf([&] { set(document, "body text", std::string("x")); }), gone);
    EXPECT_EQ(refusalOf([&] {
                  perform("close", document, {{"saving", no()}});
              }),
              (Refusal{-1728, "Can’t get document \"a.pages\" of application \"Pages\"."}));
}

TEST_F(Documents, AreClosedTogether) {
    make("document");
    make("document");
    const auto all = std::make_shared<std::vector<Value>>();
    for (const auto& document : application.elements("document", call))
        all->emplace_back(document);
    perform("close", all, {{"saving", no()}});
    EXPECT_EQ(office.openDocuments(), 0U);
}

TEST_F(Documents, OfWhichTheOfficeProgramLostHoldCanBeClosed) {
    const auto document = make("document");
    office.timeOutAt("setBodyText", 1);
    EXPECT_EQ(refusalOf([&] { set(document, "body text", std::string("x")); }).number, ScriptError::timedOut);
    EXPECT_EQ(refusalOf([&] { get(document, "body text"); }).number, ScriptError::noSuchObject);
    perform("close", document, {{"saving", no()}});
    EXPECT_TRUE(application.elements("document", call).empty());
}

TEST_F(Documents, SayWhatCannotBeSetOrGot) {
    const auto document = make("document");
    EXPECT_EQ(refusalOf([&] { set(document, "name", std::string("x")); }),
              (Refusal{-10006, "Can’t set name of document \"Untitled\" to \"x\"."}));
    EXPECT_EQ(refusalOf([&] { get(document, "colour"); }),
              (Refusal{-1728, "Can’t get colour of document \"Untitled\"."}));
    EXPECT_EQ(refusalOf([&] { document->elements("sheet", call); }).number, -1728);
    EXPECT_EQ(refusalOf([&] { set(document, "body text", true); }),
              (Refusal{-1700, "Can’t make true into type text."}));
}

TEST_F(Documents, RefuseCommandsThatNobodyKnows) {
    const auto document = make("document");
    EXPECT_EQ(refusalOf([&] { perform("sort", document); }),
              (Refusal{-1708, "document \"Untitled\" doesn’t understand the “sort” message."}));
    EXPECT_EQ(refusalOf([&] { perform("delete", document); }).number, -1708);
    EXPECT_EQ(refusalOf([&] { perform("close", std::nullopt); }),
              (Refusal{-1708, "application \"Pages\" doesn’t understand the “close” message."}));
    EXPECT_EQ(refusalOf([&] { perform("open", std::nullopt); }).number, -1701);
    EXPECT_EQ(refusalOf([&] { perform("open", std::string("letter.pages")); }).number, -1700);
    EXPECT_EQ(refusalOf([&] { perform("make", std::nullopt); }).number, -1701);
    EXPECT_EQ(refusalOf([&] { perform("close", document, {{"saving", true}}); }).number, -1700);
    EXPECT_EQ(refusalOf([&] { perform("save", document, {{"as", Constant{"pdf"}}}); }).number, -10000);
    EXPECT_EQ(refusalOf([&] { make("slide"); }),
              (Refusal{-2710, "Can’t make class slide: a document is needed to make it in."}));
}

TEST_F(Documents, OfAScriptAreClosedWithIt) {
    office.files.emplace("/a.pages", letter("a"));
    const auto document = open("/a.pages");
    set(document, "body text", std::string("b"));
    application.scriptEnded();
    EXPECT_EQ(office.openDocuments(), 0U);
    EXPECT_EQ(office.files.at("/a.pages").body, "a");
    EXPECT_EQ(refusalOf([&] { get(document, "name"); }).number, -1728);
    EXPECT_EQ(get(make("document"), "name"), Value(std::string("Untitled")));
}

TEST_F(Documents, NeedAnOfficeProgram) {
    office.unavailable = "Install an office program.";
    const Refusal refusal{-10000, "Install an office program."};
    EXPECT_EQ(refusalOf([&] { make("document"); }), refusal);
    EXPECT_EQ(refusalOf([&] { open("/a.pages"); }), refusal);
    EXPECT_EQ(application.property("name", call), Value(std::string("Pages")));
    EXPECT_TRUE(office.calls.empty());
}

TEST_F(Documents, LeaveTheApplicationAlone) {
    EXPECT_EQ(application.property("frontmost", call), Value(false));
    perform("activate", std::nullopt);
    perform("quit", std::nullopt);
    EXPECT_FALSE(application.isRunning());
    EXPECT_EQ(refusalOf([&] { application.property("version", call); }),
              (Refusal{-1728, "Can’t get version of application \"Pages\"."}));
    EXPECT_EQ(refusalOf([&] { application.setProperty("frontmost", true, call); }).number, -10006);
    make("document");
    EXPECT_TRUE(application.isRunning());
}

} // namespace bridge::iworkapps
