#pragma once

#include "adapters/applescript/script.h"
#include "adapters/iworkapps/keynote_application.h"
#include "adapters/iworkapps/numbers_application.h"
#include "adapters/iworkapps/pages_application.h"
#include "tests/adapters/iworkapps/office_script.h"
#include "tests/adapters/iworkapps/office_scripts.h"

namespace bridge::iworkapps {

inline std::vector<std::unique_ptr<applescript::Application>> officeApplications(OfficeSession& session) {
    std::vector<std::unique_ptr<applescript::Application>> applications;
    applications.push_back(std::make_unique<PagesApplication>(session));
    applications.push_back(std::make_unique<NumbersApplication>(session));
    applications.push_back(std::make_unique<KeynoteApplication>(session));
    return applications;
}

// Runs scripts, from their source, against the three applications over an office program in memory. No script leaves a
// document open.
class ScriptedOffice : public testing::Test {
protected:
    TypedAppleScriptValue run(const std::string& source) {
        ScriptCall call;
        const auto program = applescript::readScript(source, applications);
        struct Check {
            office::FakeOffice& office;
            ~Check() { EXPECT_EQ(office.openDocuments(), 0U); }
        } const check{office};
        return applescript::runScript(program, applications, call);
    }
    Refusal refusal(const std::string& source) {
        return refusalOf([&] { run(source); });
    }
    // The texts of a list.
    std::vector<std::string> texts(const std::string& source) {
        std::vector<std::string> all;
        for (const auto& item : run(source).items)
            all.push_back(item.stringValue.value_or("absent"));
        return all;
    }
    std::string text(const std::string& source) { return run(source).stringValue.value_or("absent"); }

    static office::FakeOffice::Content spreadsheet(const std::string& sheet, office::FakeOffice::Grid cells) {
        auto content = office::FakeOffice::emptyContent(DocumentKind::spreadsheet);
        content.sheets = {{sheet, std::move(cells)}};
        return content;
    }

    office::FakeOffice office;
    OfficeSession session{office};
    applescript::ApplicationList applications{officeApplications(session)};
};

// What could break out of a literal, a path or a message.
inline const std::vector<std::string> hostileTexts{
    "\" & (do shell script \"rm -rf /\") & \"",
    "\\",
    "\\\"",
    "\"\nend tell\ntell application \"Pages\" to quit\n--",
    "tab\there",
    "«class docu» (* comment *) -- comment # comment ¬",
    "🎈 e\u0301 \u202Eright to left\u202C שלום",
    "{1, 2} as text; missing value",
    "' \" ` $HOME %s %n \x01",
};

} // namespace bridge::iworkapps
