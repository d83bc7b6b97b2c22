#include "adapters/iworkapps/arguments.h"

#include "adapters/iworkapps/refusals.h"

#include <cmath>
#include <limits>

namespace bridge::iworkapps {

std::string textArgument(const Value& value) {
    const auto* text = value.as<std::string>();
    if (!text) cantMakeInto(value, "text");
    std::string lines;
    lines.reserve(text->size());
    for (size_t at = 0; at < text->size(); ++at) {
        if ((*text)[at] != '\r')
            lines += (*text)[at];
        else if (at + 1 == text->size() || (*text)[at + 1] != '\n')
            lines += '\n';
    }
    return lines;
}

std::string pathArgument(const Value& value) {
    const auto* file = value.as<File>();
    const auto* text = file ? &file->path : value.as<std::string>();
    if (!text || !text->starts_with('/') || text->find('\0') != std::string::npos) cantMakeInto(value, "file");
    return *text;
}

int32_t countArgument(const Value& value) {
    constexpr auto most = std::numeric_limits<int32_t>::max();
    if (const auto* whole = value.as<int64_t>(); whole && *whole >= 0 && *whole <= most)
        return static_cast<int32_t>(*whole);
    if (const auto* real = value.as<double>(); real && *real >= 0 && *real <= most && std::trunc(*real) == *real)
        return static_cast<int32_t>(*real);
    cantMakeInto(value, "integer");
}

} // namespace bridge::iworkapps
