#pragma once

#include <cstdint>
#include <string>

namespace bridge::office {

// Little-endian, as ZIP archives have it.
inline std::string bytesOf(uint32_t number, int count) {
    std::string bytes;
    for (int index = 0; index < count; ++index)
        bytes += static_cast<char>(number >> (8 * index));
    return bytes;
}

inline uint32_t checksum(const std::string& content) {
    uint32_t sum = 0xFFFFFFFF;
    for (const char letter : content) {
        sum ^= static_cast<unsigned char>(letter);
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum >> 1) ^ ((sum & 1) != 0 ? 0xEDB88320 : 0);
    }
    return ~sum;
}

// A ZIP archive with one file in it, as it is.
inline std::string archiveOf(const std::string& name, const std::string& content) {
    const auto size = bytesOf(static_cast<uint32_t>(content.size()), 4);
    // Version, flags, method, time, date; what both of its headers say.
    const auto facts = bytesOf(10, 2) + std::string(8, '\0') + bytesOf(checksum(content), 4) + size + size +
                       bytesOf(static_cast<uint32_t>(name.size()), 2) + bytesOf(0, 2);
    const auto local = "PK\x03\x04" + facts + name + content;
    const auto central = "PK\x01\x02" + bytesOf(20, 2) + facts + std::string(14, '\0') + name;
    return local + central + "PK\x05\x06" + bytesOf(0, 4) + bytesOf(1, 2) + bytesOf(1, 2) +
           bytesOf(static_cast<uint32_t>(central.size()), 4) + bytesOf(static_cast<uint32_t>(local.size()), 4) +
           bytesOf(0, 2);
}

// A document as iWork '09 made them, with as little in it as it can have.
inline std::string iworkDocument(const std::string& ns, const std::string& version, const std::string& content) {
    const auto space = "\"http://developer.apple.com/namespaces/";
    return archiveOf("index.xml", "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<" + ns + ":document xmlns:" + ns + "=" +
                                      space + ns + "\" xmlns:sf=" + space + "sf\" xmlns:sfa=" + space + "sfa\" " + ns +
                                      ":version=\"" + version + "\">" + content + "</" + ns + ":document>\n");
}

// Two paragraphs, "From a Mac" and "caf\u00e9".
inline std::string pagesDocument() {
    return iworkDocument("sl", "92008102400",
                         "<sf:text-storage sf:kind=\"body\"><sf:text-body><sf:section><sf:layout>"
                         "<sf:p>From a Mac</sf:p><sf:p>caf\u00e9</sf:p>"
                         "</sf:layout></sf:section></sf:text-body></sf:text-storage>");
}

// One table, "Prices", with Pear and 2.5 in its first row, Fig and 4 in the second.
inline std::string numbersDocument() {
    return iworkDocument(
        "ls", "72007061400",
        "<ls:workspace-array><ls:workspace ls:workspace-name=\"Plan\"><ls:page-info><sf:layers><sf:layer>"
        "<sf:drawables><sf:tabular-info><sf:tabular-model sf:name=\"Prices\">"
        "<sf:grid sf:numrows=\"2\" sf:numcols=\"2\">"
        "<sf:columns sf:count=\"2\"><sf:grid-column sf:width=\"98\"/><sf:grid-column sf:width=\"98\"/></sf:columns>"
        "<sf:rows sf:count=\"2\"><sf:grid-row sf:height=\"20\"/><sf:grid-row sf:height=\"20\"/></sf:rows>"
        "<sf:datasource><sf:t sf:ct=\"0\"><sf:ct sfa:s=\"Pear\"/></sf:t><sf:n sf:v=\"2.5\"/>"
        "<sf:t><sf:ct sfa:s=\"Fig\"/></sf:t><sf:n sf:v=\"4\"/></sf:datasource></sf:grid></sf:tabular-model>"
        "</sf:tabular-info></sf:drawables></sf:layer></sf:layers></ls:page-info></ls:workspace></ls:workspace-array>");
}

} // namespace bridge::office
