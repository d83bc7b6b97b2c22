#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace bridge::office {

// Rows of CSV as LibreOffice writes it.
std::vector<std::vector<std::string>> parseCSV(std::string_view text);

} // namespace bridge::office
