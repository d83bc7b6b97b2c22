#include "adapters/libreoffice/helper/number_formats.h"

#include <com/sun/star/sheet/XUniqueCellFormatRangesSupplier.hpp>
#include <com/sun/star/util/NumberFormat.hpp>
#include <com/sun/star/util/XNumberFormatTypes.hpp>
#include <com/sun/star/util/XNumberFormatsSupplier.hpp>

namespace bridge::office {

namespace {

Ref<css::util::XNumberFormats> formatsOf(const Ref<css::lang::XComponent>& document) {
    return as<css::util::XNumberFormatsSupplier>(document)->getNumberFormats();
}

Shown shownAs(sal_Int16 type) {
    using namespace css::util::NumberFormat;
    if ((type & LOGICAL) != 0) return Shown::asTruth;
    return (type & (DATETIME | CURRENCY | PERCENT | FRACTION)) != 0 ? Shown::asFormatted : Shown::asNumber;
}

} // namespace

std::vector<FormatGroup> NumberFormats::specialIn(const Ref<css::table::XCellRange>& range) const {
    const auto groups = as<css::sheet::XUniqueCellFormatRangesSupplier>(range)->getUniqueCellFormatRanges();
    std::vector<FormatGroup> special;
    for (sal_Int32 position = 0; position < groups->getCount(); ++position) {
        const auto group = element<css::sheet::XSheetCellRanges>(groups, position);
        const auto key = property(group, "NumberFormat").get<sal_Int32>();
        if (key == 0) continue;
        const auto shown = shownAs(property(formatsOf(m_document)->getByKey(key), "Type").get<sal_Int16>());
        if (shown != Shown::asNumber) special.push_back({shown, group});
    }
    return special;
}

void NumberFormats::makeLogical(const Ref<css::uno::XInterface>& cells) const {
    const auto types = as<css::util::XNumberFormatTypes>(formatsOf(m_document));
    const auto key = types->getStandardFormat(css::util::NumberFormat::LOGICAL, {"en", "US", ""});
    setProperty(cells, "NumberFormat", css::uno::Any(key));
}

void NumberFormats::makePlain(const Ref<css::uno::XInterface>& cells) const {
    setProperty(cells, "NumberFormat", css::uno::Any(sal_Int32(0)));
}

} // namespace bridge::office
