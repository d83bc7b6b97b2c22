#pragma once

#include "adapters/libreoffice/helper/uno.h"

#include <com/sun/star/lang/XComponent.hpp>

namespace bridge::office {

// Paragraphs are separated by line feeds, both ways.
std::string bodyText(const Ref<css::lang::XComponent>& document);
void setBodyText(const Ref<css::lang::XComponent>& document, const std::string& text);

} // namespace bridge::office
