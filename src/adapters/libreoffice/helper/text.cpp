#include "adapters/libreoffice/helper/text.h"

#include <com/sun/star/text/XTextDocument.hpp>

namespace bridge::office {

std::string bodyText(const Ref<css::lang::XComponent>& document) {
    return fromUno(as<css::text::XTextDocument>(document)->getText()->getString());
}

void setBodyText(const Ref<css::lang::XComponent>& document, const std::string& text) {
    // A line feed would be a line break within a paragraph.
    as<css::text::XTextDocument>(document)->getText()->setString(toUno(text).replace('\n', '\r'));
}

} // namespace bridge::office
