#include "tests/adapters/iworkapps/scripted_office.h"

namespace bridge::iworkapps {

using office::FakeOffice;
using KeynoteScripts = ScriptedOffice;

TEST_F(KeynoteScripts, MakeAPresentation) {
    run(createKeynote("/talk.key", {{"One", "• a\n• b"}, {"Two"}, {"Three", "c"}}));
    const auto& slides = office.files.at("/talk.key").slides;
    ASSERT_EQ(slides.size(), 3U);
    EXPECT_EQ(slides[0].title, "One");
    EXPECT_EQ(slides[0].body, "• a\n• b");
    EXPECT_EQ(slides[1].title, "Two");
    EXPECT_EQ(slides[1].body, "");
    EXPECT_EQ(slides[2].body, "c");
}

TEST_F(KeynoteScripts, MakeAHundredSlides) {
    run(createKeynote("/talk.key", std::vector<SlideTexts>(100, {"Title", "Body"})));
    EXPECT_EQ(office.files.at("/talk.key").slides.size(), 100U);
    EXPECT_EQ(office.count("slides"), 1U);
    EXPECT_EQ(office.count("addSlide"), 99U);
}

TEST_F(KeynoteScripts, TakeEveryTextAndPathAsItIs) {
    for (const auto& hostile : hostileTexts) {
        const auto path = '/' + hostile + ".key";
        run(createKeynote(path, {{hostile, hostile}, {hostile, hostile}}));
        for (const auto& slide : office.files.at(path).slides) {
            EXPECT_EQ(slide.title, hostile);
            EXPECT_EQ(slide.body, hostile);
        }
    }
}

TEST_F(KeynoteScripts, GoOnWithoutTextsThatASlideHasNoRoomFor) {
    office.failAt("setSlideBody", 1, ScriptError(ScriptError::noSuchObject, "The slide has no room for a body."));
    run(createKeynote("/talk.key", {{"One", "lost"}, {"Two", "kept"}}));
    const auto& slides = office.files.at("/talk.key").slides;
    ASSERT_EQ(slides.size(), 2U);
    EXPECT_EQ(slides[0].title, "One");
    EXPECT_EQ(slides[0].body, "");
    EXPECT_EQ(slides[1].body, "kept");
}

TEST_F(KeynoteScripts, CloseWhatTheyMadeWhenSomethingFails) {
    for (const auto* name : {"slides", "addSlide", "saveAs"}) {
        office.failAt(name, 1, ScriptError(-10000, "It is impossible."));
        EXPECT_EQ(refusal(createKeynote("/talk.key", {{"One"}, {"Two"}})), (Refusal{-10000, "It is impossible."}));
        EXPECT_EQ(office.calls.back(), "close") << name;
        EXPECT_TRUE(office.files.empty());
    }
}

TEST_F(KeynoteScripts, ExportInEveryFormat) {
    office.files.emplace("/talk.key", FakeOffice::emptyContent(DocumentKind::presentation));
    for (const auto& [type, format] : std::vector<std::pair<std::string, ExportFormat>>{
             {"PDF", ExportFormat::pdf},
             {"Microsoft PowerPoint", ExportFormat::pptx},
             {"QuickTime movie", ExportFormat::movie},
         }) {
        run(exportDocument("Keynote", "/talk.key", "/out/" + type, type));
        EXPECT_EQ(office.exports.at("/out/" + type).format, format);
    }
}

TEST_F(KeynoteScripts, SpeakAsPeopleDo) {
    EXPECT_EQ(texts("tell application \"Keynote\"\n"
                    "tell (make new document with properties {document theme:theme \"Blank\"})\n"
                    "make new slide\n"
                    "make new slide at end of slides\n"
                    "tell last slide to set object text of default title item to \"The end\"\n"
                    "{count slides, slide number of slide 2, object text of default title item of slide -1, "
                    "title showing of slide 1, exists slide 4}\n"
                    "end tell\n"
                    "end tell"),
              (std::vector<std::string>{"3", "2", "The end", "true", "false"}));
}

} // namespace bridge::iworkapps
