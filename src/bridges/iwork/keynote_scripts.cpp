#include "bridges/iwork/keynote_scripts.h"

#include "bridges/iwork/script_endings.h"
#include "bridges/scripting/script_literal.h"

namespace bridge {

namespace {

// A new presentation has its first slide already.
std::string_view slideStatement(size_t index) {
    return index == 0 ? "set targetSlide to slide 1 of newDocument"
                      : "set targetSlide to make new slide at end of slides of newDocument";
}

void appendSlide(std::string& script, size_t index, const KeynoteSlideInput& slide) {
    script += slideStatement(index);
    script += "\ntry\n    set object text of default title item of targetSlide to ";
    appendScriptLiteral(script, slide.title);
    script += "\nend try\n";
    if (!slide.body) return;
    script += "try\nset object text of default body item of targetSlide to ";
    appendScriptLiteral(script, *slide.body);
    script += "\nend try";
}

} // namespace

std::string createKeynoteScript(const std::vector<KeynoteSlideInput>& slides, const std::string& location) {
    std::string script = "tell application \"Keynote\"\n"
                         "    set newDocument to missing value\n"
                         "    try\n"
                         "        set newDocument to make new document\n"
                         "        ";
    for (size_t index = 0; index < slides.size(); ++index) {
        if (index > 0) script += '\n';
        appendSlide(script, index, slides[index]);
    }
    script += "\n        save newDocument in POSIX file ";
    appendScriptLiteral(script, location);
    script += "\n        close newDocument saving yes";
    return script.append(newDocumentEnding);
}

} // namespace bridge
