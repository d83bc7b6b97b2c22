#pragma once

#include "tests/support/sheet_plan.h"

#include <string>

namespace bridge::office {

// Documents as one file of XML, which LibreOffice reads as well as packed ones.
inline std::string flatDocument(const std::string& kind, const std::string& body, const std::string& before = {}) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<office:document "
           "xmlns:office=\"urn:oasis:names:tc:opendocument:xmlns:office:1.0\" "
           "xmlns:table=\"urn:oasis:names:tc:opendocument:xmlns:table:1.0\" "
           "xmlns:text=\"urn:oasis:names:tc:opendocument:xmlns:text:1.0\" "
           "xmlns:draw=\"urn:oasis:names:tc:opendocument:xmlns:drawing:1.0\" "
           "xmlns:style=\"urn:oasis:names:tc:opendocument:xmlns:style:1.0\" "
           "xmlns:config=\"urn:oasis:names:tc:opendocument:xmlns:config:1.0\" "
           "xmlns:svg=\"urn:oasis:names:tc:opendocument:xmlns:svg-compatible:1.0\" "
           "xmlns:script=\"urn:oasis:names:tc:opendocument:xmlns:script:1.0\" "
           "xmlns:ooo=\"http://openoffice.org/2004/office\" xmlns:dom=\"http://www.w3.org/2001/xml-events\" "
           "xmlns:xlink=\"http://www.w3.org/1999/xlink\" xmlns:of=\"urn:oasis:names:tc:opendocument:xmlns:of:1.2\" "
           "office:version=\"1.2\" office:mimetype=\"application/vnd.oasis.opendocument." +
           kind + "\">" + before + "<office:body><office:" + kind + ">" + body + "</office:" + kind +
           "></office:body></office:document>\n";
}

inline std::string flatSheet(const std::string& rows) {
    return flatDocument("spreadsheet", "<table:table table:name=\"Sheet1\">" + rows + "</table:table>");
}

// As the value of an attribute or as text.
inline std::string xmlText(const std::string& text) {
    std::string result;
    for (const char letter : text)
        switch (letter) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '"':
            result += "&quot;";
            break;
        default:
            result += letter;
        }
    return result;
}

// An area of a sheet as formulas write it, of the columns A to Z.
inline std::string address(const std::string& sheet, const CellRange& range) {
    std::string name;
    for (const char letter : sheet)
        name += letter == '\'' ? "''" : std::string(1, letter);
    const auto cell = [&](int32_t column, int32_t row) {
        return "$'" + name + "'.$" + static_cast<char>('A' + column) + "$" + std::to_string(row + 1);
    };
    return xmlText(cell(range.firstColumn, range.firstRow) + ":" + cell(range.lastColumn, range.lastRow));
}

inline std::string databaseRange(const std::string& name, const std::string& sheet, const CellRange& range) {
    return "<table:database-range table:name=\"" + xmlText(name) + "\" table:target-range-address=\"" +
           address(sheet, range) + "\"/>";
}

inline std::string namedRange(const std::string& name, const std::string& sheet, const CellRange& range) {
    const CellRange corner{range.firstColumn, range.firstRow, range.firstColumn, range.firstRow};
    const auto base = address(sheet, corner);
    return "<table:named-range table:name=\"" + xmlText(name) + "\" table:base-cell-address=\"" +
           base.substr(0, base.find(':')) + "\" table:cell-range-address=\"" + address(sheet, range) + "\"/>";
}

// What the document says of the sheet that is to be seen first.
inline std::string activeSheetSettings(const std::string& sheet) {
    return "<office:settings><config:config-item-set config:name=\"ooo:view-settings\">"
           "<config:config-item-map-indexed config:name=\"Views\"><config:config-item-map-entry>"
           "<config:config-item config:name=\"ViewId\" config:type=\"string\">view1</config:config-item>"
           "<config:config-item config:name=\"ActiveTable\" config:type=\"string\">" +
           xmlText(sheet) +
           "</config:config-item></config:config-item-map-entry></config:config-item-map-indexed>"
           "</config:config-item-set></office:settings>";
}

inline std::string emptySheet(const std::string& name, const std::string& more = {}) {
    return "<table:table table:name=\"" + xmlText(name) + "\"" + more +
           "><table:table-row><table:table-cell/></table:table-row></table:table>";
}

// Its tables are database ranges.
inline std::string flatSpreadsheet(const SpreadsheetPlan& plan) {
    std::string sheets, tables;
    for (const auto& sheet : plan.sheets) {
        sheets += emptySheet(sheet.name);
        for (const auto& [name, range] : sheet.tables)
            tables += databaseRange(name, sheet.name, range);
    }
    return flatDocument("spreadsheet", sheets + "<table:database-ranges>" + tables + "</table:database-ranges>",
                        activeSheetSettings(plan.sheets.at(plan.activeSheet).name));
}

} // namespace bridge::office
