#pragma once

#include "tests/adapters/libreoffice/private_office.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace bridge::office {

// A test that has a LibreOffice of its own, a folder as a user has one, and all the time that it needs.
class OfficeTest : public testing::Test {
protected:
    void SetUp() override {
        if (const auto hindrance = place.hindrance(); !hindrance.empty()) GTEST_SKIP() << hindrance;
    }

    LibreOffice& office() { return place.office(); }

    DocumentID savedText(const std::string& name, const std::string& text) {
        const auto document = office().create(DocumentKind::text, call);
        office().setBodyText(document, text, call);
        office().saveAs(document, folder.file(name), call);
        return document;
    }
    CellValue cell(DocumentID document, int32_t column, int32_t row) {
        return office().cells(document, 0, 0, {column, row, column, row}, call).at(0);
    }
    std::vector<std::string> filesInFolder() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
            names.push_back(entry.path().filename());
        std::sort(names.begin(), names.end());
        return names;
    }
    // The number and the message of the ScriptError that the action ends with.
    template <typename Action> static std::pair<int, std::string> failureOf(const Action& action) {
        try {
            action();
        } catch (const ScriptError& error) {
            return {error.number().value_or(0), error.message().value_or("")};
        }
        return {};
    }

    PrivateOffice place;
    TemporaryFolder folder;
    applescript::ScriptCall call;
};

} // namespace bridge::office
