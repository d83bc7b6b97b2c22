#pragma once

#include "base/record.h"

namespace bridge {

struct IWorkOperationResult {
    std::string application; // "Pages", "Numbers" or "Keynote"
    std::string path;        // as it was asked for; of an export, the output's
    std::string operation;   // "create", "write_range" or "export"

    bool operator==(const IWorkOperationResult&) const = default;
    static constexpr auto fields() {
        return std::tuple{required("application", &IWorkOperationResult::application),
                          required("path", &IWorkOperationResult::path),
                          required("operation", &IWorkOperationResult::operation)};
    }
};
static_assert(listsEveryMember<IWorkOperationResult>());

struct PagesDocumentContents {
    std::string path; // as it was asked for
    std::string text;

    bool operator==(const PagesDocumentContents&) const = default;
    static constexpr auto fields() {
        return std::tuple{required("path", &PagesDocumentContents::path),
                          required("text", &PagesDocumentContents::text)};
    }
};
static_assert(listsEveryMember<PagesDocumentContents>());

struct NumbersRangeContents {
    std::string range;               // "B2:C3"
    std::vector<std::string> values; // row by row

    bool operator==(const NumbersRangeContents&) const = default;
    static constexpr auto fields() {
        return std::tuple{required("range", &NumbersRangeContents::range),
                          required("values", &NumbersRangeContents::values)};
    }
};
static_assert(listsEveryMember<NumbersRangeContents>());

} // namespace bridge
