#include "bridges/iwork/iwork_application.h"

#include "base/apple_bridge_error.h"
#include "base/text.h"

namespace bridge {

IWorkApplication iworkApplication(std::string_view name) {
    const auto lower = lowercase(name);
    if (lower == "pages") return IWorkApplication::pages;
    if (lower == "numbers") return IWorkApplication::numbers;
    if (lower == "keynote") return IWorkApplication::keynote;
    throw AppleBridgeError::malformedRequest("application must be pages, numbers, or keynote.");
}

std::string_view displayName(IWorkApplication application) {
    switch (application) {
    case IWorkApplication::pages:
        return "Pages";
    case IWorkApplication::numbers:
        return "Numbers";
    case IWorkApplication::keynote:
        return "Keynote";
    }
    return {};
}

std::string_view documentExtension(IWorkApplication application) {
    switch (application) {
    case IWorkApplication::pages:
        return "pages";
    case IWorkApplication::numbers:
        return "numbers";
    case IWorkApplication::keynote:
        return "key";
    }
    return {};
}

} // namespace bridge
