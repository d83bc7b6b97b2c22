#pragma once

#include "tests/support/temporary_folder.h"

#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace bridge {

// An item in the Trash: where its bytes are now, and the absolute path that it would be restored to.
struct TrashedItem {
    std::filesystem::path place;
    std::string origin;
};

inline std::string percentDecoded(const std::string& text) {
    std::string bytes;
    for (size_t index = 0; index < text.size(); ++index) {
        if (text[index] == '%') {
            bytes += static_cast<char>(std::stoi(text.substr(index + 1, 2), nullptr, 16));
            index += 2;
        } else {
            bytes += text[index];
        }
    }
    return bytes;
}

// A Trash directory as another program would read it. Relative origins are taken from `top`. Throws when an item has no
// info file or the other way round.
inline std::vector<TrashedItem> readTrash(const std::filesystem::path& trash, const std::filesystem::path& top) {
    std::vector<TrashedItem> items;
    if (!std::filesystem::exists(trash)) return items;
    for (const auto& entry : std::filesystem::directory_iterator(trash / "files")) {
        const auto info = getFile(trash / "info" / (entry.path().filename().string() + ".trashinfo"));
        const std::string start = "[Trash Info]\nPath=";
        if (!info.starts_with(start)) throw std::runtime_error("not a .trashinfo file: " + info);
        const auto end = info.find("\nDeletionDate=");
        const auto path = percentDecoded(info.substr(start.size(), end - start.size()));
        items.push_back({entry.path(), path.starts_with('/') ? path : (top / path).string()});
    }
    const std::filesystem::directory_iterator infos(trash / "info");
    if (std::distance(begin(infos), end(infos)) != static_cast<std::ptrdiff_t>(items.size()))
        throw std::runtime_error("an info file without its item");
    return items;
}

} // namespace bridge
