#include "adapters/applescript/errors.h"

namespace bridge::applescript {

ScriptError cantGet(const std::string& what) {
    return {ScriptError::noSuchObject, "Can’t get " + what + "."};
}

ScriptError cantMake(const std::string& what, const std::string& type) {
    return {cantCoerce, "Can’t make " + what + " into type " + type + "."};
}

ScriptError syntaxFault(int line, const std::string& message) {
    return {ScriptError::syntaxError, "Line " + std::to_string(line) + ": " + message};
}

ScriptError memoryExhausted() {
    return {outOfMemory, "Out of memory."};
}

ScriptError tooDeep() {
    return {stackOverflow, "Stack overflow."};
}

} // namespace bridge::applescript
