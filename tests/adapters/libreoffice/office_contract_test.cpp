#include "tests/contracts/office_contract.h"

#include "tests/adapters/libreoffice/flat_documents.h"
#include "tests/adapters/libreoffice/private_office.h"
#include "tests/contracts/office_program_contract.h"

namespace bridge::office {

namespace {

struct LibreOfficeSite : OfficeSite {
    PrivateOffice place;
    std::string hindrance() const override { return place.hindrance(); }
    Office& office() override { return place.office(); }
    void putSpreadsheet(const std::string& path, const SpreadsheetPlan& plan) override {
        putFile(path, flatSpreadsheet(plan));
    }
};

const auto libreOffice = testing::Values(OfficeKind{"LibreOffice", [] { return std::make_unique<LibreOfficeSite>(); }});

INSTANTIATE_TEST_SUITE_P(Offices, OfficeContract, libreOffice, nameOf);
INSTANTIATE_TEST_SUITE_P(Offices, OfficeTables, libreOffice, nameOf);
INSTANTIATE_TEST_SUITE_P(Offices, OfficeProgramContract, libreOffice, nameOf);

} // namespace

} // namespace bridge::office
