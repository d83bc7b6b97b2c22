#pragma once

#include "adapters/libreoffice/protocol_values.h"

#include <string_view>

// What the bridge and its helper program tell each other, as JSON over a socket: one request, then one reply. All
// paths are those that the helper sees.
namespace bridge::office {

// Requests that change something answer true.
struct CreateDocument {
    static constexpr std::string_view operation = "create";
    using Result = bool;
    int64_t document = 0;
    DocumentKind kind = DocumentKind::text;
    static constexpr auto fields() {
        return std::tuple{required("document", &CreateDocument::document), required("kind", &CreateDocument::kind)};
    }
};

struct OpenDocument {
    static constexpr std::string_view operation = "open";
    using Result = bool; // whether it can be saved in the format that it has
    int64_t document = 0;
    DocumentKind kind = DocumentKind::text;
    std::string path;
    static constexpr auto fields() {
        return std::tuple{required("document", &OpenDocument::document), required("kind", &OpenDocument::kind),
                          required("path", &OpenDocument::path)};
    }
};

struct StoreDocument {
    static constexpr std::string_view operation = "store";
    using Result = bool;
    int64_t document = 0;
    std::string path;
    static constexpr auto fields() {
        return std::tuple{required("document", &StoreDocument::document), required("path", &StoreDocument::path)};
    }
};

struct ExportDocument {
    static constexpr std::string_view operation = "export";
    using Result = bool;
    int64_t document = 0;
    std::string path;
    ExportFormat format = ExportFormat::pdf;
    static constexpr auto fields() {
        return std::tuple{required("document", &ExportDocument::document), required("path", &ExportDocument::path),
                          required("format", &ExportDocument::format)};
    }
};

template <size_t size> struct OperationName {
    char text[size];
    consteval OperationName(const char (&name)[size]) { std::copy_n(name, size, text); }
};

// What needs nothing but the document.
template <typename Answer, OperationName name> struct OfDocument {
    static constexpr std::string_view operation = name.text;
    using Result = Answer;
    int64_t document = 0;
    static constexpr auto fields() { return std::tuple{required("document", &OfDocument::document)}; }
};

using CloseDocument = OfDocument<bool, "close">;
using GetText = OfDocument<std::string, "text">;
using GetSheets = OfDocument<std::vector<Sheet>, "sheets">;
using GetActiveSheet = OfDocument<int32_t, "active sheet">;
using GetSlides = OfDocument<std::vector<Slide>, "slides">;
using AddSlide = OfDocument<bool, "add slide">;

struct SetText {
    static constexpr std::string_view operation = "set text";
    using Result = bool;
    int64_t document = 0;
    std::string text;
    static constexpr auto fields() {
        return std::tuple{required("document", &SetText::document), required("text", &SetText::text)};
    }
};

struct GetCells {
    static constexpr std::string_view operation = "cells";
    using Result = std::vector<CellValue>;
    int64_t document = 0;
    int32_t sheet = 0;
    int32_t table = 0;
    CellRange range;
    static constexpr auto fields() {
        return std::tuple{required("document", &GetCells::document), required("sheet", &GetCells::sheet),
                          required("table", &GetCells::table), required("range", &GetCells::range)};
    }
};

struct SetCells {
    static constexpr std::string_view operation = "set cells";
    using Result = bool;
    int64_t document = 0;
    int32_t sheet = 0;
    int32_t table = 0;
    std::vector<CellChange> changes;
    static constexpr auto fields() {
        return std::tuple{required("document", &SetCells::document), required("sheet", &SetCells::sheet),
                          required("table", &SetCells::table), required("changes", &SetCells::changes)};
    }
};

struct ResizeTable {
    static constexpr std::string_view operation = "resize";
    using Result = bool;
    int64_t document = 0;
    int32_t sheet = 0;
    int32_t table = 0;
    int32_t rows = 0;
    int32_t columns = 0;
    static constexpr auto fields() {
        return std::tuple{required("document", &ResizeTable::document), required("sheet", &ResizeTable::sheet),
                          required("table", &ResizeTable::table), required("rows", &ResizeTable::rows),
                          required("columns", &ResizeTable::columns)};
    }
};

struct SetSlideText {
    static constexpr std::string_view operation = "set slide";
    using Result = bool;
    int64_t document = 0;
    int32_t slide = 0;
    SlidePart part = SlidePart::title;
    std::string text;
    static constexpr auto fields() {
        return std::tuple{required("document", &SetSlideText::document), required("slide", &SetSlideText::slide),
                          required("part", &SetSlideText::part), required("text", &SetSlideText::text)};
    }
};

template <typename Arguments> struct Request {
    std::string operation;
    Arguments arguments;
    static constexpr auto fields() {
        return std::tuple{required("operation", &Request::operation), required("arguments", &Request::arguments)};
    }
};

struct Failure {
    int64_t number = 0;
    std::string message;
    static constexpr auto fields() {
        return std::tuple{required("number", &Failure::number), required("message", &Failure::message)};
    }
};
static_assert(listsEveryMember<Failure>());

// What is in the one field that is there counts. A helper that is leaving has not looked at the request and never
// will; it also says so without being asked.
template <typename Answer> struct Reply {
    std::optional<Answer> result;
    std::optional<Failure> failure;
    std::optional<bool> leaving;
    static constexpr auto fields() {
        return std::tuple{optional("result", &Reply::result), optional("failure", &Reply::failure),
                          optional("leaving", &Reply::leaving)};
    }
};

// The first thing that a helper says, when LibreOffice is there to be asked.
using Greeting = Reply<bool>;

constexpr int helperSocket = 3;

// The program that was asked is gone, or can't be started.
constexpr int connectionInvalid = -609;
constexpr int notStarted = -10810;
constexpr int failed = -10000;

} // namespace bridge::office
