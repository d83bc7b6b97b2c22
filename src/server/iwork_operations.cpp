#include "bridges/iwork/iwork_automation_bridge.h"
#include "server/operation_rows.h"
#include "server/operation_tables.h"

namespace bridge {

namespace {

constexpr std::array toExport{BridgeCapability::pagesExport, BridgeCapability::numbersExport,
                              BridgeCapability::keynoteExport};

// Each application has an export switch of its own.
BridgeCapability capabilityToExport(const IWorkExportRequest& request) {
    switch (iworkApplication(request.application)) {
    case IWorkApplication::pages:
        return BridgeCapability::pagesExport;
    case IWorkApplication::numbers:
        return BridgeCapability::numbersExport;
    case IWorkApplication::keynote:
        break;
    }
    return BridgeCapability::keynoteExport;
}

constexpr std::array rows{
    operation<&IWorkAutomationBridge::createPagesDocument>("iwork.pages.create", BridgeCapability::pagesCreate),
    operation<&IWorkAutomationBridge::readPagesDocument>("iwork.pages.read", BridgeCapability::pagesRead),
    operation<&IWorkAutomationBridge::readNumbersRange>("iwork.numbers.read_range", BridgeCapability::numbersRead),
    operation<&IWorkAutomationBridge::createNumbersSpreadsheet>("iwork.numbers.create",
                                                                BridgeCapability::numbersCreate),
    operation<&IWorkAutomationBridge::writeNumbersRange>("iwork.numbers.write_range", BridgeCapability::numbersUpdate),
    operation<&IWorkAutomationBridge::createKeynotePresentation>("iwork.keynote.create",
                                                                 BridgeCapability::keynoteCreate),
    operation<&IWorkAutomationBridge::exportDocument, &capabilityToExport>("iwork.export", toExport),
};
static_assert(wellFormed(rows));

} // namespace

std::span<const Operation> iworkOperations() {
    return rows;
}

} // namespace bridge
