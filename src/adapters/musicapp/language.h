#pragma once

#include "adapters/applescript/application.h"
#include "adapters/applescript/errors.h"
#include "adapters/musicapp/player.h"

namespace bridge::musicapp {

// Words of the language that every file here speaks.
using applescript::ClassName;
using applescript::Command;
using applescript::Constant;
using applescript::Dictionary;
using applescript::InsertionPoint;
using applescript::List;
using applescript::MissingValue;
using applescript::Object;
using applescript::ObjectPointer;
using applescript::Record;
using applescript::ScriptCall;
using applescript::Value;

using applescript::cantGet;

} // namespace bridge::musicapp
