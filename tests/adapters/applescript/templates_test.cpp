#include "tests/adapters/applescript/script_test.h"

namespace bridge::applescript {

using testing::ElementsAre;
using Fields = std::map<std::string, Value>;

namespace {

std::string tail(const std::string& document) {
    return "\n    on error errorMessage number errorNumber\n        if " + document +
           " is not missing value then close " + document +
           " saving no\n        error errorMessage number errorNumber\n    end try\nend tell";
}

std::string wrapped(const std::string& body) {
    return "with timeout of 30 seconds\n    " + body + "\nend timeout";
}

std::string fragment(const std::string& title, const std::string& id) {
    return "set matchingTracks to search library playlist 1 for \"" + title +
           "\" only songs\nset selectedTrack to missing value\nrepeat with candidateTrack in matchingTracks\n    if "
           "(persistent ID of candidateTrack as text) is \"" +
           id +
           "\" then\n        set selectedTrack to candidateTrack\n        exit repeat\n    end if\nend repeat\nif "
           "selectedTrack is missing value then error \"Library song not found\" number -1728\nset end of "
           "resolvedTracks to selectedTrack";
}

constexpr const char* playlistTail =
    "\n    repeat with selectedTrack in resolvedTracks\n        duplicate selectedTrack to targetPlaylist\n    end "
    "repeat\n    return {(persistent ID of targetPlaylist as text), (name of targetPlaylist as text), (description of "
    "targetPlaylist as text), (count of tracks of targetPlaylist)}\nend tell";

} // namespace

// The scripts that the bridge's operations send, as they are sent.
class Templates : public ScriptTest {
protected:
    Templates() {
        for (auto* office : {pages, numbers, keynote})
            office->kinds["document"] = [this] { return document = newDocument(); };
        for (auto* office : {pages, numbers, keynote})
            office->actions["open"] = [this](const Command&, ScriptCall&) { return ObjectPointer(document); };
        for (auto* office : {pages, numbers, keynote})
            office->actions["export"] = [](const Command&, ScriptCall&) { return MissingValue{}; };
        keynote->kinds["slide"] = [] { return newSlide(); };
        fillMusic();
    }

    std::shared_ptr<MemoryObject> newDocument() {
        auto made = std::make_shared<MemoryObject>("document", Fields{{"name", "Plan"}, {"body text", "Hello"}});
        auto sheet = made->add("sheet", {{"name", "Sheet 1"}});
        sheet->add(table);
        made->properties["active sheet"] = ObjectPointer(sheet);
        made->add(newSlide());
        return made;
    }
    static std::shared_ptr<MemoryObject> newSlide() {
        auto slide = std::make_shared<MemoryObject>("slide");
        for (const auto* item : {"default title item", "default body item"})
            slide->properties[item] = ObjectPointer(std::make_shared<MemoryObject>("text item"));
        return slide;
    }
    static std::string textOnSlide(MemoryObject& slide, const std::string& item) {
        auto* holder = dynamic_cast<MemoryObject*>(slide.properties[item].as<ObjectPointer>()->get());
        return MemoryApplication::write(holder->properties["object text"]);
    }

    void fillMusic() {
        library = music->root->add("library playlist", {{"name", "Library"}});
        for (const auto* title : {"Blue", "Blue Sky", "Green"})
            library->add("track", {{"name", title},
                                   {"artist", "Ann"},
                                   {"album", "Colours"},
                                   {"duration", 61.5},
                                   {"persistent id", "0000 " + std::string(title)}});
        playlist = music->root->add("user playlist",
                                    {{"name", "Mine"}, {"description", "Good"}, {"persistent id", "00000000000000AB"}});
        music->kinds["user playlist"] = [] {
            return std::make_shared<MemoryObject>("user playlist", Fields{{"persistent id", "00000000000000AC"}});
        };
        music->actions["search"] = [this](const Command& command, ScriptCall&) {
            auto found = std::make_shared<std::vector<Value>>();
            for (const auto& track : library->children["track"])
                if (track->properties["name"].as<std::string>()->starts_with(
                        *command.parameter("for")->as<std::string>()))
                    found->push_back(ObjectPointer(track));
            return Value(found);
        };
        music->actions["play"] = music->actions["pause"] = [](const Command&, ScriptCall&) { return MissingValue{}; };
    }

    std::shared_ptr<MemoryTable> table = std::make_shared<MemoryTable>();
    std::shared_ptr<MemoryObject> document = newDocument();
    std::shared_ptr<MemoryObject> library, playlist;
};

TEST_F(Templates, CreateAPagesDocument) {
    run(wrapped("tell application \"Pages\"\n    set newDocument to missing value\n    try\n        set newDocument to "
                "make new document\n        set body text of newDocument to \"Dear \\\"Ann\\\"\\nHi\"\n        save "
                "newDocument in POSIX file \"/a/b.pages\"\n        close newDocument saving yes" +
                tail("newDocument")));
    EXPECT_EQ(*document->properties["body text"].as<std::string>(), "Dear \"Ann\"\nHi");
    EXPECT_THAT(pages->said(), ElementsAre("make new document", "save document \"Plan\" in file /a/b.pages",
                                           "close document \"Plan\" saving yes"));
    EXPECT_EQ(pages->ended, 1);
    EXPECT_EQ(music->ended, 0);
}

TEST_F(Templates, CloseWhatTheyMadeWhenSomethingFails) {
    pages->actions["save"] = [](const Command&, ScriptCall&) -> Value { throw ScriptError(-48, "The disk is full."); };
    const auto source = wrapped("tell application \"Pages\"\n    set newDocument to missing value\n    try\n        "
                                "set newDocument to make new document\n        set body text of newDocument to "
                                "\"x\"\n        save newDocument in POSIX file \"/a\"\n        close newDocument "
                                "saving yes" +
                                tail("newDocument"));
    EXPECT_EQ(errorNumber(source), -48);
    EXPECT_EQ(pages->said().back(), "close document \"Plan\" saving no");
    EXPECT_EQ(errorText(source), "The disk is full.");
}

TEST_F(Templates, ReadAPagesDocument) {
    const auto result =
        run(wrapped("tell application \"Pages\"\n    set targetDocument to missing value\n    try\n        set "
                    "targetDocument to open POSIX file \"/a/b.pages\"\n        set documentText to body text of "
                    "targetDocument as text\n        close targetDocument saving no\n        return documentText" +
                    tail("targetDocument")));
    EXPECT_EQ(result.stringValue, "Hello");
    EXPECT_THAT(pages->said(), ElementsAre("open file /a/b.pages", "close document \"Plan\" saving no"));
}

TEST_F(Templates, ReadANumbersRange) {
    table->cell("A1")->properties["value"] = "x";
    table->cell("B1")->properties["value"] = 1.5;
    table->cell("A2")->properties["value"] = 2.0;
    for (const auto* sheet : {"active sheet", "sheet \"Sheet 1\""})
        for (const auto* chosen : {"table 1", "table \"Table 1\""})
            EXPECT_EQ(text(wrapped("tell application \"Numbers\"\n    set targetDocument to missing value\n    try\n   "
                                   "     set targetDocument to open POSIX file \"/a.numbers\"\n        tell "
                                   "targetDocument\n            set targetSheet to " +
                                   std::string(sheet) +
                                   "\n            tell targetSheet\n                set targetTable to " +
                                   std::string(chosen) +
                                   "\n                tell targetTable\n                    set cellValues to value "
                                   "of cells of range \"A1:B2\"\n                end tell\n            end tell\n      "
                                   "  end tell\n        close targetDocument saving no\n        return cellValues" +
                                   tail("targetDocument"))),
                      "{x, 1.5, 2, absent}");
    EXPECT_EQ(table->lastRange->askedAtOnce, 0);
}

TEST_F(Templates, AskForAllValuesAtOnceWhereThatCanBe) {
    table->knowsAllAtOnce = true;
    EXPECT_EQ(text("tell application \"Numbers\"\ntell table 1 of sheet 1 of (open POSIX file \"/a\")\nreturn value of "
                   "cells of range \"A1:A3\"\nend tell\nend tell"),
              "{absent, absent, absent}");
    EXPECT_EQ(table->lastRange->askedAtOnce, 1);
    EXPECT_EQ(table->lastRange->asked, 0);
}

TEST_F(Templates, CreateANumbersSpreadsheet) {
    numbers->root->add("template", {{"name", "Blank"}});
    run(wrapped("tell application \"Numbers\"\n    set newDocument to missing value\n    try\n        set newDocument "
                "to make new document with properties {document template:first template}\n        tell table 1 of "
                "sheet 1 of newDocument\n            set row count to 2\n            set column count to 3\nset value "
                "of cell \"A1\" to \"12.5\"\nset value of cell \"B1\" to true\nset value of cell \"C1\" to missing "
                "value\n        end tell\n        save newDocument in POSIX file \"/a.numbers\"\n        close "
                "newDocument saving yes" +
                tail("newDocument")));
    EXPECT_EQ(*table->properties["row count"].as<int64_t>(), 2);
    EXPECT_EQ(*table->properties["column count"].as<int64_t>(), 3);
    EXPECT_EQ(*table->cell("A1")->properties["value"].as<std::string>(), "12.5");
    EXPECT_EQ(*table->cell("B1")->properties["value"].as<bool>(), true);
    EXPECT_TRUE(table->cell("C1")->properties["value"].is<MissingValue>());
    EXPECT_EQ(numbers->said()[0], "make new document with properties {document template:template \"Blank\"}");
}

TEST_F(Templates, WriteANumbersRange) {
    run(wrapped("tell application \"Numbers\"\n    set targetDocument to missing value\n    try\n        set "
                "targetDocument to open POSIX file \"/a.numbers\"\n        tell targetDocument\n            tell "
                "active sheet\n                tell table \"Table 1\"\n                    set value of cell \"B2\" to "
                "\"=A1\"\nset value of cell \"C2\" to false\n                end tell\n            end tell\n        "
                "end tell\n        save targetDocument\n        close targetDocument saving yes" +
                tail("targetDocument")));
    EXPECT_EQ(*table->cell("B2")->properties["value"].as<std::string>(), "=A1");
    EXPECT_THAT(numbers->said(),
                ElementsAre("open file /a.numbers", "save document \"Plan\"", "close document \"Plan\" saving yes"));
}

TEST_F(Templates, CreateAKeynotePresentation) {
    run(wrapped("tell application \"Keynote\"\n    set newDocument to missing value\n    try\n        set newDocument "
                "to make new document\n        set targetSlide to slide 1 of newDocument\ntry\n    set object text of "
                "default title item of targetSlide to \"One\"\nend try\nset targetSlide to make new slide at end of "
                "slides of newDocument\ntry\n    set object text of default title item of targetSlide to \"Two\"\nend "
                "try\ntry\nset object text of default body item of targetSlide to \"Body\"\nend try\n        save "
                "newDocument in POSIX file \"/a.key\"\n        close newDocument saving yes" +
                tail("newDocument")));
    const auto& slides = document->children["slide"];
    ASSERT_EQ(slides.size(), 2U);
    EXPECT_EQ(textOnSlide(*slides[0], "default title item"), "\"One\"");
    EXPECT_EQ(textOnSlide(*slides[1], "default title item"), "\"Two\"");
    EXPECT_EQ(textOnSlide(*slides[1], "default body item"), "\"Body\"");
    EXPECT_EQ(keynote->said()[1], "make new slide at the end of slide");
}

TEST_F(Templates, GoOnWithoutRoomForATitle) {
    document->children["slide"][0]->properties.erase("default title item");
    EXPECT_EQ(errorNumber("tell application \"Keynote\"\nset targetSlide to slide 1 of (open POSIX file "
                          "\"/a\")\ntry\n    set object text of default title item of targetSlide to \"One\"\nend "
                          "try\nend tell"),
              1);
}

TEST_F(Templates, ExportADocument) {
    struct Export {
        MemoryApplication* application;
        std::string type, constant;
    };
    for (const auto& [application, type, constant] :
         {Export{pages, "PDF", "pdf"}, Export{pages, "Microsoft Word", "microsoft word"},
          Export{pages, "unformatted text", "unformatted text"}, Export{numbers, "CSV", "csv"},
          Export{keynote, "QuickTime movie", "quicktime movie"}}) {
        application->commands.clear();
        run(wrapped("tell application \"" + application->name() +
                    "\"\n    set targetDocument to missing value\n    try\n        set targetDocument to open POSIX "
                    "file \"/in\"\n        export targetDocument to POSIX file \"/out\" as " +
                    type + "\n        close targetDocument saving no" + tail("targetDocument")));
        EXPECT_EQ(application->said()[1], "export document \"Plan\" to file /out as " + constant);
    }
}

TEST_F(Templates, CreateAPlaylist) {
    EXPECT_EQ(text(wrapped("tell application \"Music\"\n    set resolvedTracks to {}\n    " +
                           fragment("Blue", "0000 Blue Sky") + "\n" + fragment("Green", "0000 Green") +
                           "\n    set targetPlaylist to make new user playlist with properties {name:\"New\", "
                           "description:\"\"}" +
                           playlistTail)),
              "{00000000000000AC, New, , 2}");
    EXPECT_EQ(music->said()[0], "search library playlist \"Library\" for \"Blue\" only songs");
}

TEST_F(Templates, FailForASongThatTheSearchDoesNotFind) {
    const auto source =
        wrapped("tell application \"Music\"\n    set resolvedTracks to {}\n    " + fragment("Blue", "0000 Green") +
                "\n    set targetPlaylist to make new user playlist with properties {name:\"New\", "
                "description:\"\"}" +
                playlistTail);
    EXPECT_EQ(errorNumber(source), -1728);
    EXPECT_EQ(errorText(source), "Library song not found");
    EXPECT_EQ(music->root->children["user playlist"].size(), 1U);
}

TEST_F(Templates, AddSongsToAPlaylist) {
    EXPECT_EQ(
        text(wrapped("tell application \"Music\"\n    set resolvedTracks to {}\n    " + fragment("Blue", "0000 Blue") +
                     "\n    set targetPlaylist to first user playlist whose persistent ID is "
                     "\"00000000000000AB\"" +
                     playlistTail)),
        "{00000000000000AB, Mine, Good, 1}");
    EXPECT_EQ(errorNumber("tell application \"Music\"\nset t to first user playlist whose persistent ID is "
                          "\"x\"\nend tell"),
              -1719);
}

TEST_F(Templates, DeleteAPlaylist) {
    const auto source = [](const std::string& id) {
        return wrapped("tell application \"Music\"\n    set matchingPlaylists to (every user playlist whose persistent "
                       "ID is \"" +
                       id +
                       "\")\n    if (count of matchingPlaylists) is not 1 then error \"User playlist not found\" "
                       "number -1728\n    delete item 1 of matchingPlaylists\nend tell");
    };
    EXPECT_EQ(errorText(source("0")), "User playlist not found");
    run(source("00000000000000AB"));
    EXPECT_THAT(music->said(), ElementsAre("delete user playlist \"Mine\""));
    EXPECT_TRUE(music->root->children["user playlist"].empty());
}

TEST_F(Templates, PlayASong) {
    library->knowsAllAtOnce = true;
    const auto result = run(
        wrapped("tell application \"Music\"\n    set matchingTracks to (every track of library playlist 1 whose "
                "persistent ID is \"0000 Green\")\n    if (count of matchingTracks) is not 1 then error \"Library song "
                "not found\" number -1728\n    set selectedTrack to item 1 of matchingTracks\n    play selectedTrack\n "
                "   return {(persistent ID of selectedTrack as text), (name of selectedTrack as text), (artist of "
                "selectedTrack as text), (album of selectedTrack as text), (duration of selectedTrack as real)}\nend "
                "tell"));
    EXPECT_EQ(write(result), "{0000 Green, Green, Ann, Colours, 61.5}");
    EXPECT_EQ(result.items[4].doubleValue, 61.5);
    EXPECT_THAT(music->said(), ElementsAre("play track \"Green\""));
    EXPECT_EQ(library->askedAtOnce, 1);
}

TEST_F(Templates, Pause) {
    run(wrapped("tell application \"Music\" to pause"));
    EXPECT_THAT(music->said(), ElementsAre("pause"));
}

} // namespace bridge::applescript
