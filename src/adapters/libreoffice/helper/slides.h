#pragma once

#include "adapters/libreoffice/helper/uno.h"
#include "adapters/libreoffice/protocol.h"

#include <com/sun/star/lang/XComponent.hpp>

namespace bridge::office {

std::vector<Slide> slides(const Ref<css::lang::XComponent>& document);
void addSlide(const Ref<css::lang::XComponent>& document);
// Throws noSuchObject when there is no such slide, or no room for it there.
void setSlideText(const Ref<css::lang::XComponent>& document, const SetSlideText& request);

} // namespace bridge::office
