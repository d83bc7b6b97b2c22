#pragma once

#include "adapters/libreoffice/helper/documents.h"

namespace bridge::office {

// Writes the document in another format. Throws ScriptError when documents of its kind have no such format.
void exportDocument(const Documents& documents, const ExportDocument& request);

// A sheet, counted from 0, or with -1 the first one; UTF-8 without a mark, commas, the cells as they are shown.
extern const char* const csvFilter;
std::string csvOptions(int32_t sheet);

} // namespace bridge::office
