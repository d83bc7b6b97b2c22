#include "adapters/applescript/numbers.h"

#include "adapters/applescript/heap.h"
#include "base/json_writer.h"
#include "base/text.h"

#include <charconv>
#include <cmath>

namespace bridge::applescript {

std::optional<Datum> readNumber(std::string_view text) {
    text = trim(text);
    if (text.starts_with('+')) text.remove_prefix(1);
    const auto digits = text.starts_with('-') ? text.substr(1) : text;
    // Neither "inf" nor "nan", which the reader would take.
    if (digits.empty() || digits.find_first_not_of("0123456789.eE+-") != std::string_view::npos) return std::nullopt;
    const char* const end = text.data() + text.size();
    int64_t integer = 0;
    if (const auto read = std::from_chars(text.data(), end, integer); read.ec == std::errc() && read.ptr == end)
        return integer;
    double real = 0;
    const auto read = std::from_chars(text.data(), end, real);
    return read.ec == std::errc() && read.ptr == end ? std::optional<Datum>(real) : std::nullopt;
}

std::string writeReal(double value) {
    constexpr double most = 1e15;
    constexpr double least = 1e-5;
    const double size = std::abs(value);
    const bool isPlain = value == 0 || (size < most && size >= least) || !std::isfinite(value);
    char buffer[64];
    const auto end = isPlain ? std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed).ptr
                             : std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::scientific).ptr;
    std::string text(buffer, end);
    const size_t exponent = std::min(text.find('e'), text.size());
    if (exponent < text.size()) text[exponent] = 'E';
    if (std::isfinite(value) && text.find('.') == std::string::npos) text.insert(exponent, ".0");
    return text;
}

std::string writeShortest(double value) {
    if (!std::isfinite(value)) return writeReal(value);
    JSONWriter writer;
    writer.number(value);
    return writer.take();
}

std::optional<Datum> numberIn(const Datum& datum) {
    if (datum.is<int64_t>() || datum.is<double>()) return datum;
    if (const auto* truth = datum.as<bool>()) return int64_t{*truth ? 1 : 0};
    if (const auto* text = datum.text()) return readNumber(*text);
    const auto* list = datum.list();
    return list && list->items().size() == 1 && !list->items().front().list() ? numberIn(list->items().front())
                                                                              : std::nullopt;
}

double asReal(const Datum& number) {
    if (const auto* integer = number.as<int64_t>()) return static_cast<double>(*integer);
    return *number.as<double>();
}

} // namespace bridge::applescript
