#pragma once

#include "adapters/libreoffice/helper/soffice.h"

#include <com/sun/star/lang/XComponent.hpp>

namespace bridge::office {

// Every slide for a few seconds, as a QuickTime movie of pictures.
void exportMovie(const SOffice& office, const Ref<css::lang::XComponent>& presentation, const std::string& path);

} // namespace bridge::office
