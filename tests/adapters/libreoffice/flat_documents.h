#pragma once

#include <string>

namespace bridge::office {

// Documents as one file of XML, which LibreOffice reads as well as packed ones.
inline std::string flatDocument(const std::string& kind, const std::string& body, const std::string& before = {}) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<office:document "
           "xmlns:office=\"urn:oasis:names:tc:opendocument:xmlns:office:1.0\" "
           "xmlns:table=\"urn:oasis:names:tc:opendocument:xmlns:table:1.0\" "
           "xmlns:text=\"urn:oasis:names:tc:opendocument:xmlns:text:1.0\" "
           "xmlns:draw=\"urn:oasis:names:tc:opendocument:xmlns:drawing:1.0\" "
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

} // namespace bridge::office
