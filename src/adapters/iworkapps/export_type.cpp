#include "adapters/iworkapps/export_type.h"

#include "adapters/iworkapps/refusals.h"

#include <algorithm>
#include <array>

#include <fmt/format.h>

namespace bridge::iworkapps {

namespace {

struct ExportType {
    std::string_view constant, shown;
    DocumentKind kind;
    ExportFormat format;
};

constexpr std::array exportTypes{
    ExportType{"pdf", "PDF", DocumentKind::text, ExportFormat::pdf},
    ExportType{"microsoft word", "Microsoft Word", DocumentKind::text, ExportFormat::docx},
    ExportType{"epub", "EPUB", DocumentKind::text, ExportFormat::epub},
    ExportType{"unformatted text", "unformatted text", DocumentKind::text, ExportFormat::text},
    ExportType{"pdf", "PDF", DocumentKind::spreadsheet, ExportFormat::pdf},
    ExportType{"microsoft excel", "Microsoft Excel", DocumentKind::spreadsheet, ExportFormat::xlsx},
    ExportType{"csv", "CSV", DocumentKind::spreadsheet, ExportFormat::csv},
    ExportType{"pdf", "PDF", DocumentKind::presentation, ExportFormat::pdf},
    ExportType{"microsoft powerpoint", "Microsoft PowerPoint", DocumentKind::presentation, ExportFormat::pptx},
    ExportType{"quicktime movie", "QuickTime movie", DocumentKind::presentation, ExportFormat::movie},
};

std::string applicationOf(DocumentKind kind) {
    switch (kind) {
    case DocumentKind::text:
        return "Pages";
    case DocumentKind::spreadsheet:
        return "Numbers";
    case DocumentKind::presentation:
        return "Keynote";
    }
    return {};
}

} // namespace

std::vector<std::string> exportConstants() {
    std::vector<std::string> constants;
    for (const auto& type : exportTypes)
        if (std::ranges::find(constants, type.constant) == constants.end()) constants.emplace_back(type.constant);
    return constants;
}

ExportFormat exportFormat(DocumentKind kind, const Value& constant) {
    const auto* word = constant.as<Constant>();
    if (!word) cantMakeInto(constant, "export format");
    const ExportType* foreign = nullptr;
    for (const auto& type : exportTypes) {
        if (type.constant != word->name) continue;
        if (type.kind == kind) return type.format;
        foreign = &type;
    }
    if (!foreign) cantMakeInto(constant, "export format");
    fails(fmt::format("“{}” is an export format of {}, not of {}.", foreign->shown, applicationOf(foreign->kind),
                      applicationOf(kind)));
}

} // namespace bridge::iworkapps
