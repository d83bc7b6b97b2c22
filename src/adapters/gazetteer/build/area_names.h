#pragma once

#include <map>
#include <set>
#include <string>
#include <utility>

namespace bridge::gazetteer {

// What people may call a country or a region: the name as one word, and the token of the area.
using AreaNames = std::set<std::pair<std::string, std::string>>;

// Countries in every language that ICU knows, and by their codes. The tokens are the two letters in lower case.
AreaNames countryNames();

// In English, and in those countries where it is usual by the letters that stand behind a town. `divisions` is by codes
// such as US.MA, and the tokens are those codes in lower case.
AreaNames divisionNames(const std::map<std::string, std::string>& divisions);

// By two letters, in English.
std::string countryName(const std::string& code);

std::string areaToken(const std::string& code);

} // namespace bridge::gazetteer
