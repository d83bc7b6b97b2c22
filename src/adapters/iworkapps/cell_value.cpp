#include "adapters/iworkapps/cell_value.h"

#include "adapters/iworkapps/refusals.h"

#include <cmath>

namespace bridge::iworkapps {

Value scriptValue(CellValue value) {
    if (auto* text = std::get_if<std::string>(&value)) return std::move(*text);
    if (const auto* number = std::get_if<double>(&value)) return *number;
    if (const auto* truth = std::get_if<bool>(&value)) return *truth;
    return MissingValue{};
}

CellValue cellValue(const Value& value) {
    if (const auto* text = value.as<std::string>()) return *text;
    if (const auto* number = value.as<double>(); number && std::isfinite(*number)) return *number;
    if (const auto* whole = value.as<int64_t>()) return static_cast<double>(*whole);
    if (const auto* truth = value.as<bool>()) return *truth;
    if (value.is<MissingValue>()) return std::monostate{};
    cantMakeInto(value, "cell value");
}

} // namespace bridge::iworkapps
