#include "base/text.h"
#include "bridges/iwork/iwork_requests.h"
#include "server/operation_rows.h"
#include "server/operation_tables.h"

namespace bridge {

namespace {

constexpr std::array toExport{BridgeCapability::pagesExport, BridgeCapability::numbersExport,
                              BridgeCapability::keynoteExport};

// Each application has an export switch of its own.
BridgeCapability capabilityToExport(const IWorkExportRequest& request) {
    const auto application = lowercase(request.application);
    if (application == "pages") return BridgeCapability::pagesExport;
    if (application == "numbers") return BridgeCapability::numbersExport;
    if (application == "keynote") return BridgeCapability::keynoteExport;
    throw AppleBridgeError::malformedRequest("application must be pages, numbers, or keynote.");
}

constexpr std::array rows{
    later<CreatePagesDocumentRequest>("iwork.pages.create", BridgeCapability::pagesCreate),
    later<IWorkDocumentRequest>("iwork.pages.read", BridgeCapability::pagesRead),
    later<NumbersRangeRequest>("iwork.numbers.read_range", BridgeCapability::numbersRead),
    later<CreateNumbersSpreadsheetRequest>("iwork.numbers.create", BridgeCapability::numbersCreate),
    later<WriteNumbersRangeRequest>("iwork.numbers.write_range", BridgeCapability::numbersUpdate),
    later<CreateKeynotePresentationRequest>("iwork.keynote.create", BridgeCapability::keynoteCreate),
    laterBy<IWorkExportRequest, &capabilityToExport>("iwork.export", toExport),
};
static_assert(wellFormed(rows));

} // namespace

std::span<const Operation> iworkOperations() {
    return rows;
}

} // namespace bridge
