#include "bridges/iwork/export_format.h"

#include "base/apple_bridge_error.h"
#include "base/text.h"

#include <algorithm>

namespace bridge {

namespace {

struct ExportFormat {
    IWorkApplication application;
    std::string_view key;
    std::string_view type;
};

constexpr ExportFormat exportFormats[] = {
    {IWorkApplication::pages, "pdf", "PDF"},
    {IWorkApplication::pages, "word", "Microsoft Word"},
    {IWorkApplication::pages, "docx", "Microsoft Word"},
    {IWorkApplication::pages, "epub", "EPUB"},
    {IWorkApplication::pages, "text", "unformatted text"},
    {IWorkApplication::numbers, "pdf", "PDF"},
    {IWorkApplication::numbers, "excel", "Microsoft Excel"},
    {IWorkApplication::numbers, "xlsx", "Microsoft Excel"},
    {IWorkApplication::numbers, "csv", "CSV"},
    {IWorkApplication::keynote, "pdf", "PDF"},
    {IWorkApplication::keynote, "powerpoint", "Microsoft PowerPoint"},
    {IWorkApplication::keynote, "pptx", "Microsoft PowerPoint"},
    {IWorkApplication::keynote, "movie", "QuickTime movie"},
};

} // namespace

std::string_view exportType(IWorkApplication application, std::string_view format) {
    auto key = lowercase(format);
    std::ranges::replace(key, '_', ' ');
    for (const auto& each : exportFormats)
        if (each.application == application && each.key == key) return each.type;
    throw AppleBridgeError::malformedRequest("Unsupported " + std::string(displayName(application)) +
                                             " export format: " + std::string(format));
}

} // namespace bridge
