#include "tests/contracts/office_contract.h"

#include "tests/adapters/libreoffice/private_office.h"

namespace bridge::office {

namespace {

struct LibreOfficeSite : OfficeSite {
    PrivateOffice place;
    std::string hindrance() const override { return place.hindrance(); }
    Office& office() override { return place.office(); }
};

INSTANTIATE_TEST_SUITE_P(Offices, OfficeContract,
                         testing::Values(OfficeKind{"LibreOffice", [] { return std::make_unique<LibreOfficeSite>(); }}),
                         nameOf);

} // namespace

} // namespace bridge::office
