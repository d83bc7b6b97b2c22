#include "adapters/libreoffice/helper/csv.h"

#include <algorithm>

namespace bridge::office {

std::vector<std::vector<std::string>> parseCSV(std::string_view text) {
    std::vector<std::vector<std::string>> rows;
    while (!text.empty()) {
        auto& row = rows.emplace_back();
        for (bool ended = false; !ended;) {
            std::string cell;
            bool isQuoted = false;
            size_t index = 0;
            for (; index < text.size(); ++index) {
                const char letter = text[index];
                if (letter == '"' && isQuoted && index + 1 < text.size() && text[index + 1] == '"')
                    cell += text[++index];
                else if (letter == '"' && (isQuoted || cell.empty()))
                    isQuoted = !isQuoted;
                else if (!isQuoted && (letter == ',' || letter == '\n'))
                    break;
                else
                    cell += letter;
            }
            row.push_back(std::move(cell));
            ended = index >= text.size() || text[index] == '\n';
            text.remove_prefix(std::min(text.size(), index + 1));
        }
    }
    return rows;
}

} // namespace bridge::office
