#pragma once

#include "adapters/applescript/applescript_engine.h"
#include "tests/adapters/iworkapps/scripted_office.h"
#include "tests/adapters/libreoffice/private_office.h"

#include <gmock/gmock.h>

namespace bridge::iworkapps {

// Runs scripts, from their source, against the three applications over a LibreOffice of the test's own, with files in
// a folder as a user has one. No script leaves a document open.
class LiveOffice : public testing::Test {
protected:
    void SetUp() override {
        if (const auto hindrance = place.hindrance(); !hindrance.empty()) GTEST_SKIP() << hindrance;
    }
    void TearDown() override { EXPECT_THAT(place.filesAtWork(), testing::IsEmpty()); }

    TypedAppleScriptValue run(const std::string& source) { return loop.runUntilDone(engine.run(source)); }
    Refusal refusal(const std::string& source) {
        return refusalOf([&] { run(source); });
    }
    std::string text(const std::string& source) { return run(source).stringValue.value_or("absent"); }
    std::vector<std::string> texts(const std::string& source) {
        std::vector<std::string> all;
        for (const auto& item : run(source).items)
            all.push_back(item.stringValue.value_or("absent"));
        return all;
    }

    std::string file(const std::string& name) const { return folder.file(name); }
    std::vector<std::string> filesInFolder() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
            names.push_back(entry.path().filename());
        return names;
    }

    TemporaryFolder folder;
    office::PrivateOffice place;
    EventLoop loop;
    OfficeSession session{place.office()};
    AppleScriptEngine engine{loop, officeApplications(session)};
};

// The hostile texts that a document can hold.
inline std::vector<std::string> hostileButStorable() {
    auto all = hostileTexts;
    std::erase_if(all, [](const std::string& text) { return text.find('\x01') != text.npos; });
    return all;
}

// As the name of a file.
inline std::string nameFrom(std::string text, const std::string& extension) {
    std::replace(text.begin(), text.end(), '/', '|');
    return text + extension;
}

} // namespace bridge::iworkapps
