#pragma once

#include "adapters/libreoffice/office.h"
#include "base/record.h"

#include <algorithm>

// The values of office.h on their way between the bridge and its helper: arrays without names, for cells come in
// thousands.
namespace bridge {

namespace office {

enum class SlidePart { title, body };

template <typename... Parts> void encodeList(JSONWriter& writer, const Parts&... parts) {
    writer.beginArray();
    (bridge::encode(writer, parts), ...);
    writer.endArray();
}

template <typename... Parts> std::tuple<Parts...> decodeList(const JSONValue& value, const DecodePath& path) {
    const auto* array = value.array();
    if (!array || array->size() != sizeof...(Parts)) path.fail("expected another number of parts");
    return [&]<size_t... I>(std::index_sequence<I...>) {
        return std::tuple<Parts...>{bridge::decode<Parts>((*array)[I], path.index(I))...};
    }
    (std::index_sequence_for<Parts...>());
}

} // namespace office

template <> struct Codec<int32_t> {
    static void encode(JSONWriter& writer, int32_t value) { writer.integer(value); }
    static int32_t decode(const JSONValue& value, const DecodePath& path) {
        const auto number = bridge::decode<int64_t>(value, path);
        return static_cast<int32_t>(std::clamp<int64_t>(number, INT32_MIN, INT32_MAX));
    }
};

// An enumeration as the number of its case.
template <typename E, E last> struct NumberedCases {
    static void encode(JSONWriter& writer, E value) { writer.integer(static_cast<int64_t>(value)); }
    static E decode(const JSONValue& value, const DecodePath& path) {
        const auto number = bridge::decode<int64_t>(value, path);
        if (number < 0 || number > static_cast<int64_t>(last)) path.fail("not one of its cases");
        return static_cast<E>(number);
    }
};

template <>
struct Codec<office::DocumentKind> : NumberedCases<office::DocumentKind, office::DocumentKind::presentation> {};
template <> struct Codec<office::ExportFormat> : NumberedCases<office::ExportFormat, office::ExportFormat::movie> {};

template <> struct Codec<office::SlidePart> : NumberedCases<office::SlidePart, office::SlidePart::body> {};

template <> struct Codec<office::CellValue> {
    static void encode(JSONWriter& writer, const office::CellValue& value) {
        if (const auto* flag = std::get_if<bool>(&value)) return writer.boolean(*flag);
        if (const auto* number = std::get_if<double>(&value)) return writer.number(*number);
        if (const auto* text = std::get_if<std::string>(&value)) return writer.string(*text);
        writer.null();
    }
    static office::CellValue decode(const JSONValue& value, const DecodePath& path) {
        if (value.isNull()) return std::monostate();
        if (const auto* flag = value.boolean()) return *flag;
        if (const auto* number = value.number()) return *number;
        return bridge::decode<std::string>(value, path);
    }
};

template <> struct Codec<office::CellRange> {
    static void encode(JSONWriter& writer, const office::CellRange& range) {
        office::encodeList(writer, range.firstColumn, range.firstRow, range.lastColumn, range.lastRow);
    }
    static office::CellRange decode(const JSONValue& value, const DecodePath& path) {
        const auto [left, top, right, bottom] = office::decodeList<int32_t, int32_t, int32_t, int32_t>(value, path);
        return {left, top, right, bottom};
    }
};

template <> struct Codec<office::CellChange> {
    static void encode(JSONWriter& writer, const office::CellChange& change) {
        office::encodeList(writer, change.column, change.row, change.value);
    }
    static office::CellChange decode(const JSONValue& value, const DecodePath& path) {
        auto [column, row, content] = office::decodeList<int32_t, int32_t, office::CellValue>(value, path);
        return {column, row, std::move(content)};
    }
};

template <> struct Codec<office::Table> {
    static void encode(JSONWriter& writer, const office::Table& table) {
        office::encodeList(writer, table.name, table.rows, table.columns);
    }
    static office::Table decode(const JSONValue& value, const DecodePath& path) {
        auto [name, rows, columns] = office::decodeList<std::string, int32_t, int32_t>(value, path);
        return {std::move(name), rows, columns};
    }
};

template <> struct Codec<office::Sheet> {
    static void encode(JSONWriter& writer, const office::Sheet& sheet) {
        office::encodeList(writer, sheet.name, sheet.tables);
    }
    static office::Sheet decode(const JSONValue& value, const DecodePath& path) {
        auto [name, tables] = office::decodeList<std::string, std::vector<office::Table>>(value, path);
        return {std::move(name), std::move(tables)};
    }
};

template <> struct Codec<office::Slide> {
    static void encode(JSONWriter& writer, const office::Slide& slide) {
        office::encodeList(writer, slide.hasTitle, slide.hasBody, slide.title, slide.body);
    }
    static office::Slide decode(const JSONValue& value, const DecodePath& path) {
        auto [hasTitle, hasBody, title, body] = office::decodeList<bool, bool, std::string, std::string>(value, path);
        return {hasTitle, hasBody, std::move(title), std::move(body)};
    }
};

} // namespace bridge
