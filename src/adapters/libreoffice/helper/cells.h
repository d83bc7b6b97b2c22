#pragma once

#include "adapters/libreoffice/helper/tables.h"
#include "adapters/libreoffice/protocol.h"

namespace bridge::office {

std::vector<CellValue> cells(const Ref<css::lang::XComponent>& document, const GetCells& request);
void setCells(const Ref<css::lang::XComponent>& document, const SetCells& request);

} // namespace bridge::office
