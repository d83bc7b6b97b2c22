#pragma once

#include <ctime>
#include <string>
#include <string_view>

namespace bridge {

// The text of a .trashinfo file. `origin` is bytes, percent-encoded but for "/"; the date is written in local time.
std::string trashInfo(std::string_view origin, time_t deleted);

// The name that an item gets in the Trash: its own, with ".mark" behind it unless `mark` is empty. It is cut, between
// characters, so that the info file's longer name still fits a file system.
std::string trashName(std::string_view name, std::string_view mark);

} // namespace bridge
