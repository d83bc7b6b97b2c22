#pragma once

#include "base/schema.h"

namespace bridge {

// What a request puts into one cell: a text, a number, true or false, or nothing.
struct IWorkCellValue {
    std::variant<std::string, double, bool, std::nullptr_t> value = nullptr;
};

template <> struct Codec<IWorkCellValue> {
    static void encode(JSONWriter& writer, const IWorkCellValue& cell) {
        std::visit([&](const auto& value) { bridge::encode(writer, JSONValue{value}); }, cell.value);
    }
    static IWorkCellValue decode(const JSONValue& value, const DecodePath& path) {
        if (const auto* text = value.string()) return {*text};
        if (const auto* number = value.number()) return {*number};
        if (const auto* flag = value.boolean()) return {*flag};
        if (value.isNull()) return {nullptr};
        path.fail("Cell values must be text, numbers, booleans, or null.");
    }
};

template <> struct Schema<IWorkCellValue> {
    static JSONValue describe(SchemaBook&) { return parseJSON(R"({"type":["string","number","boolean","null"]})"); }
};

struct IWorkDocumentRequest {
    std::string rootID;
    std::string path;

    static constexpr auto fields() {
        return std::tuple{required("rootID", &IWorkDocumentRequest::rootID),
                          required("path", &IWorkDocumentRequest::path)};
    }
};
static_assert(listsEveryMember<IWorkDocumentRequest>());

struct CreatePagesDocumentRequest {
    std::string rootID;
    std::string path;
    std::string text;

    static constexpr auto fields() {
        return std::tuple{required("rootID", &CreatePagesDocumentRequest::rootID),
                          required("path", &CreatePagesDocumentRequest::path),
                          required("text", &CreatePagesDocumentRequest::text)};
    }
};
static_assert(listsEveryMember<CreatePagesDocumentRequest>());

struct NumbersRangeRequest {
    std::string rootID;
    std::string path;
    std::optional<std::string> sheet;
    std::optional<std::string> table;
    std::string range;

    static constexpr auto fields() {
        return std::tuple{required("rootID", &NumbersRangeRequest::rootID),
                          required("path", &NumbersRangeRequest::path), optional("sheet", &NumbersRangeRequest::sheet),
                          optional("table", &NumbersRangeRequest::table),
                          required("range", &NumbersRangeRequest::range)};
    }
};
static_assert(listsEveryMember<NumbersRangeRequest>());

struct CreateNumbersSpreadsheetRequest {
    std::string rootID;
    std::string path;
    std::vector<std::vector<IWorkCellValue>> values;

    static constexpr auto fields() {
        return std::tuple{required("rootID", &CreateNumbersSpreadsheetRequest::rootID),
                          required("path", &CreateNumbersSpreadsheetRequest::path),
                          required("values", &CreateNumbersSpreadsheetRequest::values)};
    }
};
static_assert(listsEveryMember<CreateNumbersSpreadsheetRequest>());

struct WriteNumbersRangeRequest {
    std::string rootID;
    std::string path;
    std::optional<std::string> sheet;
    std::optional<std::string> table;
    std::string range;
    std::vector<std::vector<IWorkCellValue>> values;

    static constexpr auto fields() {
        return std::tuple{required("rootID", &WriteNumbersRangeRequest::rootID),
                          required("path", &WriteNumbersRangeRequest::path),
                          optional("sheet", &WriteNumbersRangeRequest::sheet),
                          optional("table", &WriteNumbersRangeRequest::table),
                          required("range", &WriteNumbersRangeRequest::range),
                          required("values", &WriteNumbersRangeRequest::values)};
    }
};
static_assert(listsEveryMember<WriteNumbersRangeRequest>());

struct KeynoteSlideInput {
    std::string title;
    std::optional<std::string> body;

    static constexpr auto fields() {
        return std::tuple{required("title", &KeynoteSlideInput::title), optional("body", &KeynoteSlideInput::body)};
    }
};
static_assert(listsEveryMember<KeynoteSlideInput>());

struct CreateKeynotePresentationRequest {
    std::string rootID;
    std::string path;
    std::vector<KeynoteSlideInput> slides;

    static constexpr auto fields() {
        return std::tuple{required("rootID", &CreateKeynotePresentationRequest::rootID),
                          required("path", &CreateKeynotePresentationRequest::path),
                          required("slides", &CreateKeynotePresentationRequest::slides)};
    }
};
static_assert(listsEveryMember<CreateKeynotePresentationRequest>());

struct IWorkExportRequest {
    std::string application;
    std::string rootID;
    std::string inputPath;
    std::string outputPath;
    std::string format;

    static constexpr auto fields() {
        return std::tuple{
            required("application", &IWorkExportRequest::application), required("rootID", &IWorkExportRequest::rootID),
            required("inputPath", &IWorkExportRequest::inputPath),
            required("outputPath", &IWorkExportRequest::outputPath), required("format", &IWorkExportRequest::format)};
    }
};
static_assert(listsEveryMember<IWorkExportRequest>());

} // namespace bridge
