#pragma once

#include "adapters/applescript/application.h"
#include "adapters/libreoffice/office.h"

namespace bridge::iworkapps {

// Words of the language that every file here speaks.
using applescript::ClassName;
using applescript::ClassTerms;
using applescript::Command;
using applescript::Constant;
using applescript::Dictionary;
using applescript::File;
using applescript::InsertionPoint;
using applescript::List;
using applescript::MissingValue;
using applescript::Object;
using applescript::ObjectPointer;
using applescript::Record;
using applescript::ScriptCall;
using applescript::Value;

using office::CellChange;
using office::CellRange;
using office::CellValue;
using office::DocumentID;
using office::DocumentKind;
using office::ExportFormat;
using office::Office;

} // namespace bridge::iworkapps
