#include "tests/adapters/iworkapps/live_office.h"

namespace bridge::iworkapps {

using LiveDocuments = LiveOffice;
using Texts = std::vector<std::string>;

TEST_F(LiveDocuments, KeepHostileTextsUnderHostileNames) {
    for (const auto& hostile : hostileTexts) {
        const auto path = file(nameFrom(hostile, ".pages"));
        const auto content = hostile.find('\x01') == hostile.npos ? hostile : "only the name";
        run(createPages(path, content));
        EXPECT_EQ(text(readPages(path)), content);
    }
    EXPECT_EQ(filesInFolder().size(), hostileTexts.size());
}

TEST_F(LiveDocuments, LieInFoldersWithHostileNames) {
    for (const auto& hostile : hostileTexts) {
        const auto inner = folder / nameFrom(hostile, "") / "inner #1 %20";
        std::filesystem::create_directories(inner);
        run(createNumbers((inner / "a.numbers").string(), 1, 1, {setCell("A1", "\"x\"")}));
        EXPECT_EQ(texts(readRange((inner / "a.numbers").string(), "active sheet", "table 1", "A1")), (Texts{"x"}));
        std::filesystem::remove(inner / "a.numbers");
        EXPECT_TRUE(std::filesystem::is_empty(inner));
    }
}

TEST_F(LiveDocuments, KeepHalfAMillionCharacters) {
    std::string all;
    while (all.size() < 500'000)
        all += "Line " + std::to_string(all.size()) + (all.size() % 7 == 0 ? " \\ \"\n" : " fox ");
    all.resize(500'000, 'x');
    run(createPages(file("long.pages"), all));
    EXPECT_TRUE(text(readPages(file("long.pages"))) == all);
}

TEST_F(LiveDocuments, MayBeEmpty) {
    run(createPages(file("empty.pages"), ""));
    EXPECT_EQ(text(readPages(file("empty.pages"))), "");
}

TEST_F(LiveDocuments, HaveAHundredSlides) {
    std::vector<SlideTexts> slides;
    for (int number = 1; number <= 100; ++number)
        slides.push_back({"Title " + std::to_string(number), number % 2 == 0 ? "Body " + std::to_string(number) : ""});
    run(createKeynote(file("long.key"), slides));
    EXPECT_EQ(texts("tell application \"Keynote\"\nset d to open POSIX file " + quoted(file("long.key")) +
                    "\n{count slides of d, object text of default title item of slide 100 of d, "
                    "object text of default body item of slide 100 of d, "
                    "object text of default title item of slide 1 of d, "
                    "object text of default body item of slide 99 of d}\nend tell"),
              (Texts{"100", "Title 100", "Body 100", "Title 1", ""}));
}

TEST_F(LiveDocuments, KeepHostileSlides) {
    std::vector<SlideTexts> slides;
    for (const auto& hostile : hostileButStorable())
        slides.push_back({hostile, hostile});
    run(createKeynote(file("a.key"), slides));
    Texts expected;
    std::string items;
    for (size_t number = 1; number <= slides.size(); ++number) {
        const auto slide = "slide " + std::to_string(number) + " of d";
        items += (items.empty() ? "" : ", ") + ("object text of default title item of " + slide) +
                 ", object text of default body item of " + slide;
        expected.insert(expected.end(), 2, slides[number - 1].title);
    }
    EXPECT_EQ(texts("tell application \"Keynote\"\nset d to open POSIX file " + quoted(file("a.key")) + "\n{" + items +
                    "}\nend tell"),
              expected);
}

TEST_F(LiveDocuments, AreExportedInEveryFormat) {
    run(createPages(file("a.pages"), "Fox"));
    run(createNumbers(file("a.numbers"), 1, 2, {setCell("A1", "\"Fox\""), setCell("B1", "\"2.5\"")}));
    run(createKeynote(file("a.key"), {{"Fox", "den"}, {"Two"}}));
    struct Case {
        std::string application, input, type;
        testing::Matcher<const std::string&> content;
    };
    const std::vector<Case> cases{
        {"Pages", "a.pages", "PDF", testing::StartsWith("%PDF-")},
        {"Pages", "a.pages", "Microsoft Word", testing::HasSubstr("word/document.xml")},
        {"Pages", "a.pages", "EPUB", testing::HasSubstr("application/epub+zip")},
        {"Pages", "a.pages", "unformatted text", testing::StartsWith("Fox")},
        {"Numbers", "a.numbers", "PDF", testing::StartsWith("%PDF-")},
        {"Numbers", "a.numbers", "Microsoft Excel", testing::HasSubstr("xl/workbook.xml")},
        {"Numbers", "a.numbers", "CSV", testing::StrEq("Fox,2.5\n")},
        {"Keynote", "a.key", "PDF", testing::StartsWith("%PDF-")},
        {"Keynote", "a.key", "Microsoft PowerPoint", testing::HasSubstr("ppt/presentation.xml")},
        {"Keynote", "a.key", "QuickTime movie", testing::HasSubstr("moov")},
    };
    for (const auto& [application, input, type, content] : cases) {
        const auto output = application + " \"" + type + "\" \U0001F98A.out";
        run(exportDocument(application, file(input), file(output), type));
        EXPECT_THAT(getFile(folder / output), content) << application << ' ' << type;
    }
    EXPECT_EQ(filesInFolder().size(), 3 + cases.size());
}

TEST_F(LiveDocuments, ReplaceNothing) {
    putFile(folder / "there.pages", "kept");
    EXPECT_NE(refusal(createPages(file("there.pages"), "x")), Refusal{});
    run(createPages(file("a.pages"), "x"));
    EXPECT_NE(refusal(exportDocument("Pages", file("a.pages"), file("there.pages"), "PDF")), Refusal{});
    EXPECT_EQ(getFile(folder / "there.pages"), "kept");
}

TEST_F(LiveDocuments, LeaveNothingBehindWhenSomethingFails) {
    EXPECT_NE(refusal(createPages(file("a.pages"), "\x1b")), Refusal{});
    EXPECT_NE(refusal(createPages(file("nowhere/a.pages"), "x")), Refusal{});
    EXPECT_NE(refusal(createNumbers(file("a.numbers"), 2, 2, {setCell("A1", "\"x\""), setCell("ZZZ1", "\"x\"")})),
              Refusal{});
    EXPECT_NE(refusal(readPages(file("none.pages"))), Refusal{});
    EXPECT_THAT(filesInFolder(), testing::IsEmpty());
    EXPECT_THAT(place.filesAtWork(), testing::IsEmpty());
    run(createPages(file("a.pages"), "works"));
    EXPECT_EQ(text(readPages(file("a.pages"))), "works");
    EXPECT_EQ(filesInFolder(), (Texts{"a.pages"}));
}

TEST_F(LiveDocuments, LeaveTheFileAsItIsWhenSomethingFails) {
    run(createNumbers(file("a.numbers"), 1, 1, {setCell("A1", "\"before\"")}));
    const auto before = getFile(folder / "a.numbers");
    for (const auto& cells : {Texts{setCell("A1", "\"after\""), setCell("ZZZ1", "\"x\"")},
                              Texts{setCell("A1", "\"after\""), setCell("B1", quoted("\x01"))}}) {
        EXPECT_NE(refusal(writeRange(file("a.numbers"), "active sheet", "table 1", cells)), Refusal{});
        EXPECT_EQ(getFile(folder / "a.numbers"), before);
        EXPECT_EQ(filesInFolder(), (Texts{"a.numbers"}));
        EXPECT_THAT(place.filesAtWork(), testing::IsEmpty());
    }
}

TEST_F(LiveDocuments, AreThereAgainAfterATimeOut) {
    run(createPages(file("a.pages"), "one"));
    const auto before = getFile(folder / "a.pages");
    place.send("soffice.bin", SIGSTOP);
    auto source = readPages(file("a.pages"));
    source.replace(source.find("30 seconds"), 10, "1 seconds");
    EXPECT_EQ(refusal(source).number, ScriptError::timedOut);
    place.awaitEnd("soffice.bin");
    EXPECT_EQ(text(readPages(file("a.pages"))), "one");
    EXPECT_EQ(getFile(folder / "a.pages"), before);
    EXPECT_EQ(filesInFolder(), (Texts{"a.pages"}));
}

} // namespace bridge::iworkapps
