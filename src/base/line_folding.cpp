#include "base/line_folding.h"

namespace bridge {

std::string folded(std::string_view line) {
    constexpr size_t longest = 75;
    std::string text;
    size_t room = longest;
    while (line.size() > room) {
        size_t cut = room;
        while (cut > 1 && (static_cast<unsigned char>(line[cut]) & 0xc0) == 0x80)
            --cut;
        text.append(line.substr(0, cut)).append("\r\n ");
        line.remove_prefix(cut);
        room = longest - 1;
    }
    return text.append(line).append("\r\n");
}

} // namespace bridge
