#include "adapters/iworkapps/keynote_application.h"
#include "tests/adapters/iworkapps/office_script.h"

namespace bridge::iworkapps {

using office::FakeOffice;

class Slides : public OfficeScript<KeynoteApplication> {
protected:
    ObjectPointer addSlide(const ObjectPointer& document) {
        return make("slide", {{"at", InsertionPoint{document, "slide", InsertionPoint::Place::end}}});
    }
    ObjectPointer title(const ObjectPointer& slide) { return getObject(slide, "default title item"); }
    ObjectPointer body(const ObjectPointer& slide) { return getObject(slide, "default body item"); }
};

TEST_F(Slides, AreOneInANewPresentation) {
    const auto document = make("document");
    EXPECT_EQ(document->count("slide", call), 1U);
    EXPECT_EQ(get(at(document, "slide", 1), "slide number"), Value(int64_t{1}));
    EXPECT_EQ(at(document, "slide", 2), nullptr);
    EXPECT_EQ(at(document, "slide", 0), nullptr);
}

TEST_F(Slides, AreAddedAtTheEndAndBearTexts) {
    const auto document = make("document");
    set(title(at(document, "slide", 1)), "object text", std::string("First"));
    for (const auto* text : {"Second", "Third"}) {
        const auto slide = addSlide(document);
        set(title(slide), "object text", std::string(text));
        set(body(slide), "object text", std::string("• a\r• b"));
    }
    EXPECT_EQ(get(title(at(document, "slide", 2)), "object text"), Value(std::string("Second")));
    perform("save", document, {{"in", File{"/talk.key"}}});

    const auto& slides = office.files.at("/talk.key").slides;
    ASSERT_EQ(slides.size(), 3U);
    EXPECT_EQ(slides[0].title, "First");
    EXPECT_EQ(slides[2].title, "Third");
    EXPECT_EQ(slides[2].body, "• a\n• b");
}

TEST_F(Slides, AreMadeInTheDocumentThatIsTold) {
    const auto document = make("document");
    perform("make", document, {{"new", ClassName{"slide"}}});
    EXPECT_EQ(document->elements("slide", call).size(), 2U);
    EXPECT_EQ(get(document, "modified"), Value(true));
}

TEST_F(Slides, AreMadeNowhereElse) {
    const auto document = make("document");
    const InsertionPoint beginning{document, "slide", InsertionPoint::Place::beginning};
    EXPECT_EQ(refusalOf([&] {
                  make("slide", {{"at", beginning}});
              }),
              (Refusal{-2710, "Can’t make class slide: new slides come at the end."}));
    EXPECT_EQ(refusalOf([&] { make("slide", {{"at", at(document, "slide", 1)}}); }).number, -2710);
    EXPECT_EQ(refusalOf([&] { make("slide"); }).number, -2710);
    const auto properties = std::make_shared<std::vector<std::pair<std::string, Value>>>();
    properties->emplace_back("slide number", int64_t{1});
    EXPECT_EQ(refusalOf([&] {
                  perform("make", document, {{"new", ClassName{"slide"}}, {"with properties", properties}});
              }),
              (Refusal{-2710, "Can’t make class slide: its slide number can’t be set."}));
    EXPECT_EQ(office.count("addSlide"), 0U);
}

TEST_F(Slides, WithoutRoomForATextSaySo) {
    auto talk = FakeOffice::emptyContent(DocumentKind::presentation);
    talk.slides = {{false, true, "", "b"}};
    office.files.emplace("/talk.key", talk);
    const auto slide = at(open("/talk.key"), "slide", 1);
    EXPECT_EQ(refusalOf([&] { title(slide); }),
              (Refusal{-1728, "Can’t get default title item of slide 1 of document \"talk.key\"."}));
    EXPECT_EQ(get(body(slide), "object text"), Value(std::string("b")));
    EXPECT_EQ(get(slide, "title showing"), Value(false));
    EXPECT_EQ(get(slide, "body showing"), Value(true));
}

TEST_F(Slides, AreAskedForOnceHoweverManyAreAdded) {
    const auto document = make("document");
    for (int slide = 0; slide < 99; ++slide)
        set(title(addSlide(document)), "object text", std::string("x"));
    EXPECT_EQ(office.count("slides"), 1U);
    EXPECT_EQ(document->count("slide", call), 100U);
}

TEST_F(Slides, AreNotCountedWhenAddingThemFailed) {
    const auto document = make("document");
    office.failAt("addSlide", 1, ScriptError(-10000, "No more slides."));
    EXPECT_EQ(refusalOf([&] { addSlide(document); }), (Refusal{-10000, "No more slides."}));
    EXPECT_EQ(document->count("slide", call), 1U);
}

TEST_F(Slides, AreTheSameWhereverTheyWereFound) {
    const auto document = make("document");
    const auto slide = at(document, "slide", 1);
    EXPECT_TRUE(slide->isSameAs(*document->elements("slide", call).front()));
    EXPECT_FALSE(slide->isSameAs(*addSlide(document)));
    EXPECT_TRUE(title(slide)->isSameAs(*title(slide)));
    EXPECT_FALSE(title(slide)->isSameAs(*body(slide)));
}

TEST_F(Slides, CannotBeUsedAfterTheirDocument) {
    const auto document = make("document");
    const auto slide = at(document, "slide", 1);
    const auto item = title(slide);
    perform("close", document, {{"saving", no()}});
    EXPECT_EQ(refusalOf([&] { set(item, "object text", std::string("x")); }).number, -1728);
    EXPECT_EQ(refusalOf([&] { title(slide); }).number, -1728);
    EXPECT_EQ(refusalOf([&] { at(document, "slide", 1); }).number, -1728);
}

TEST_F(Slides, RefuseWhatTheyDoNotHave) {
    const auto slide = at(make("document"), "slide", 1);
    EXPECT_EQ(refusalOf([&] { get(slide, "presenter notes"); }),
              (Refusal{-1728, "Can’t get presenter notes of slide 1 of document \"Untitled\"."}));
    EXPECT_EQ(refusalOf([&] { set(slide, "slide number", int64_t{2}); }).number, -10006);
    EXPECT_EQ(refusalOf([&] { set(title(slide), "object text", int64_t{2}); }).number, -1700);
    EXPECT_EQ(refusalOf([&] { get(title(slide), "colour"); }),
              (Refusal{-1728, "Can’t get colour of default title item of slide 1 of document \"Untitled\"."}));
    EXPECT_EQ(refusalOf([&] { set(title(slide), "name", int64_t{2}); }).number, -10006);
    EXPECT_EQ(refusalOf([&] { slide->elements("shape", call); }).number, -1728);
    EXPECT_EQ(refusalOf([&] { perform("close", slide); }).number, -1708);
}

} // namespace bridge::iworkapps
