#pragma once

#include "adapters/libreoffice/helper/uno.h"

#include <com/sun/star/lang/XComponent.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/table/XCellRange.hpp>

#include <optional>

namespace bridge::office {

// What a cell's number is shown as.
enum class Shown {
    asNumber,
    asTruth,
    asFormatted // a date, an amount: the text counts
};

// Cells of one format.
struct FormatGroup {
    Shown shown = Shown::asNumber;
    Ref<css::sheet::XSheetCellRanges> cells;
};

class NumberFormats {
public:
    explicit NumberFormats(const Ref<css::lang::XComponent>& document) : m_document(document) {}

    // Those of the range that are not shown as numbers.
    std::vector<FormatGroup> specialIn(const Ref<css::table::XCellRange>& range) const;
    void makeLogical(const Ref<css::uno::XInterface>& cells) const;
    void makePlain(const Ref<css::uno::XInterface>& cells) const;

private:
    Ref<css::lang::XComponent> m_document;
};

} // namespace bridge::office
