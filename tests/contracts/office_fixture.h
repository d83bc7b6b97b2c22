#pragma once

#include "adapters/libreoffice/office.h"
#include "tests/support/sheet_plan.h"
#include "tests/support/temporary_folder.h"

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <ostream>
#include <string>

namespace bridge::office {

// What the contract needs of one office program.
struct OfficeSite {
    virtual ~OfficeSite() = default;

    // Why it can't run on this machine; its tests are then skipped.
    virtual std::string hindrance() const { return {}; }
    virtual Office& office() = 0;
    // A spreadsheet that somebody else has made, to be opened at that path.
    virtual void putSpreadsheet(const std::string& path, const SpreadsheetPlan& plan) = 0;
};

struct OfficeKind {
    std::string name;
    std::function<std::unique_ptr<OfficeSite>()> make;
};

inline void PrintTo(const OfficeKind& kind, std::ostream* out) {
    *out << kind.name;
}

inline std::string nameOf(const testing::TestParamInfo<OfficeKind>& info) {
    return info.param.name;
}

// The number of the ScriptError that the action ends with; nothing when it ends well.
template <typename Action> std::optional<int> errorOf(const Action& action) {
    try {
        action();
    } catch (const ScriptError& error) {
        EXPECT_NE(error.message().value_or(""), "");
        return error.number().value_or(0);
    }
    return std::nullopt;
}

class OfficeContract : public testing::TestWithParam<OfficeKind> {
protected:
    void SetUp() override {
        site = GetParam().make();
        if (const auto hindrance = site->hindrance(); !hindrance.empty()) GTEST_SKIP() << hindrance;
    }

    Office& office() { return site->office(); }

    // Written, closed and opened again.
    DocumentID reopened(DocumentID document, DocumentKind kind, const std::string& name) {
        office().saveAs(document, folder.file(name), call);
        office().close(document, call);
        return office().open(kind, folder.file(name), call);
    }
    CellValue cell(DocumentID document, int32_t column, int32_t row) {
        return office().cells(document, 0, 0, {column, row, column, row}, call).at(0);
    }
    // What a cell holds when that was typed into it.
    CellValue typed(DocumentID document, const std::string& text) {
        office().setCells(document, 0, 0, {{0, 0, text}}, call);
        return cell(document, 0, 0);
    }

    TemporaryFolder folder;
    applescript::ScriptCall call;
    std::unique_ptr<OfficeSite> site;
};
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(OfficeContract);

// What only a program does that has formats, formulas and files on a disk.
class OfficeProgramContract : public OfficeContract {};
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(OfficeProgramContract);

inline const std::string oddLine =
    "caf\u00e9 \U0001F98A\U0001F469\u200D\U0001F373 \u05E9\u05DC\u05D5\u05DD \u0645  <&>";
inline const std::string oddText = oddLine + "\ttab";

} // namespace bridge::office
