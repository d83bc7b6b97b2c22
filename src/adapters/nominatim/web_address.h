#pragma once

#include <string_view>

namespace bridge::nominatim {

// Whether it is whole and of the Web: http or https, and a host.
bool isWebAddress(std::string_view text);

} // namespace bridge::nominatim
