#include "adapters/libreoffice/helper/export.h"

#include "adapters/libreoffice/helper/movie.h"
#include "adapters/libreoffice/helper/tables.h"

#include <array>
#include <filesystem>

namespace bridge::office {

namespace {

struct Route {
    DocumentKind kind;
    ExportFormat format;
    const char* filter;
    const char* options;
};

constexpr std::array routes = std::to_array<Route>({
    {DocumentKind::text, ExportFormat::pdf, "writer_pdf_Export", ""},
    {DocumentKind::text, ExportFormat::docx, "MS Word 2007 XML", ""},
    {DocumentKind::text, ExportFormat::epub, "EPUB", ""},
    {DocumentKind::text, ExportFormat::text, "Text (encoded)", "UTF8,LF,,,false"},
    {DocumentKind::spreadsheet, ExportFormat::pdf, "calc_pdf_Export", ""},
    {DocumentKind::spreadsheet, ExportFormat::xlsx, "Calc MS Excel 2007 XML", ""},
    {DocumentKind::presentation, ExportFormat::pdf, "impress_pdf_Export", ""},
    {DocumentKind::presentation, ExportFormat::pptx, "Impress MS PowerPoint 2007 XML", ""},
});

// LibreOffice adds the sheet's name to that of the file, so it is written into a folder of its own.
void exportSheet(const Ref<css::lang::XComponent>& document, const std::string& path) {
    const std::filesystem::path folder = path + ".sheet";
    std::filesystem::create_directory(folder);
    storeTo(document, folder / "sheet.csv", csvFilter, csvOptions(activeSheet(document)).c_str());
    std::filesystem::rename(std::filesystem::directory_iterator(folder)->path(), path);
}

} // namespace

const char* const csvFilter = "Text - txt - csv (StarCalc)";

std::string csvOptions(int32_t sheet) {
    // Comma, quotation mark, UTF-8, from the first row; quotation marks only where needed; as shown.
    return "44,34,76,1,,1033,false,true,true,false,false," + std::to_string(sheet + 1);
}

void exportDocument(const Documents& documents, const ExportDocument& request) {
    const auto& component = documents.find(request.document);
    const auto kind = documents.kindOf(request.document);
    if (kind == DocumentKind::spreadsheet && request.format == ExportFormat::csv)
        return exportSheet(component, request.path);
    if (kind == DocumentKind::presentation && request.format == ExportFormat::movie)
        return exportMovie(documents.office(), component, request.path);
    for (const auto& route : routes)
        if (route.kind == kind && route.format == request.format)
            return storeTo(component, request.path, route.filter, route.options);
    throw ScriptError(failed, "The document can't be exported in this format.");
}

} // namespace bridge::office
