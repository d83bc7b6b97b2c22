#include "bridges/iwork/export_script.h"

#include "bridges/iwork/script_endings.h"
#include "bridges/scripting/script_literal.h"

namespace bridge {

std::string exportScript(IWorkApplication application, std::string_view type, const std::string& input,
                         const std::string& output) {
    auto script = "tell application " + scriptLiteral(displayName(application)) +
                  "\n    set targetDocument to missing value\n"
                  "    try\n"
                  "        set targetDocument to open POSIX file " +
                  scriptLiteral(input) + "\n        export targetDocument to POSIX file " + scriptLiteral(output) +
                  " as ";
    script += type;
    script += "\n        close targetDocument saving no";
    return script.append(targetDocumentEnding);
}

} // namespace bridge
