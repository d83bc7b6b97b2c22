#include "bridges/iwork/pages_scripts.h"

#include "bridges/iwork/script_endings.h"
#include "bridges/scripting/script_literal.h"

namespace bridge {

std::string createPagesScript(const std::string& text, const std::string& location) {
    std::string script = "tell application \"Pages\"\n"
                         "    set newDocument to missing value\n"
                         "    try\n"
                         "        set newDocument to make new document\n"
                         "        set body text of newDocument to ";
    appendScriptLiteral(script, text);
    script += "\n        save newDocument in POSIX file ";
    appendScriptLiteral(script, location);
    script += "\n        close newDocument saving yes";
    return script.append(newDocumentEnding);
}

std::string readPagesScript(const std::string& location) {
    std::string script = "tell application \"Pages\"\n"
                         "    set targetDocument to missing value\n"
                         "    try\n"
                         "        set targetDocument to open POSIX file ";
    appendScriptLiteral(script, location);
    script += "\n        set documentText to body text of targetDocument as text\n"
              "        close targetDocument saving no\n"
              "        return documentText";
    return script.append(targetDocumentEnding);
}

} // namespace bridge
