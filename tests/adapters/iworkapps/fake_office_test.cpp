#include "tests/contracts/office_contract.h"
#include "tests/fakes/fake_office.h"

namespace bridge::office {

namespace {

struct FakeSite : OfficeSite {
    FakeOffice fake;
    Office& office() override { return fake; }
    void putSpreadsheet(const std::string& path, const SpreadsheetPlan& plan) override {
        auto content = FakeOffice::emptyContent(DocumentKind::spreadsheet);
        content.sheets.clear();
        for (const auto& sheet : plan.sheets)
            content.sheets.push_back({sheet.name, {}, sheet.tables});
        content.activeSheet = static_cast<int32_t>(plan.activeSheet);
        fake.files.insert_or_assign(path, content);
    }
};

// What the tests of the scripts rely on is what they get from a real program.
const auto fakeOffice = testing::Values(OfficeKind{"FakeOffice", [] { return std::make_unique<FakeSite>(); }});

INSTANTIATE_TEST_SUITE_P(Offices, OfficeContract, fakeOffice, nameOf);
INSTANTIATE_TEST_SUITE_P(Offices, OfficeTables, fakeOffice, nameOf);

} // namespace

} // namespace bridge::office
