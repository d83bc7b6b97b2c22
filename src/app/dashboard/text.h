#pragma once

#include <QString>

#include <string_view>

namespace bridge {

// Text of the bridge, which is UTF-8, as Qt has it.
inline QString shown(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace bridge
