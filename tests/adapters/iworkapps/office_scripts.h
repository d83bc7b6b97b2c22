#pragma once

#include <string>
#include <vector>

namespace bridge::iworkapps {

// The scripts that the bridge sends to Pages, Numbers and Keynote, as the literals and statements put together.

// As source of a text.
inline std::string quoted(const std::string& text) {
    std::string source = "\"";
    for (const auto c : text) {
        if (c == '\\' || c == '"') source += '\\';
        if (c == '\r')
            source += "\\r";
        else if (c == '\n')
            source += "\\n";
        else
            source += c;
    }
    return source + '"';
}

inline std::string joined(const std::vector<std::string>& lines) {
    std::string all;
    for (const auto& line : lines)
        all += (all.empty() ? "" : "\n") + line;
    return all;
}

// From the tell to its end: whatever fails closes the document without saving.
inline std::string script(const std::string& application, const std::string& variable, const std::string& body) {
    const auto whole = "tell application \"" + application + "\"\n    set " + variable +
                       " to missing value\n    try\n        " + body +
                       "\n    on error errorMessage number errorNumber\n        if " + variable +
                       " is not missing value then close " + variable +
                       " saving no\n        error errorMessage number errorNumber\n    end try\nend tell";
    return "with timeout of 30 seconds\n    " + whole + "\nend timeout";
}

inline std::string createPages(const std::string& path, const std::string& text) {
    return script("Pages", "newDocument",
                  "set newDocument to make new document\n        set body text of newDocument to " + quoted(text) +
                      "\n        save newDocument in POSIX file " + quoted(path) +
                      "\n        close newDocument saving yes");
}

inline std::string readPages(const std::string& path) {
    return script("Pages", "targetDocument",
                  "set targetDocument to open POSIX file " + quoted(path) +
                      "\n        set documentText to body text of targetDocument as text"
                      "\n        close targetDocument saving no\n        return documentText");
}

inline std::string readRange(const std::string& path, const std::string& sheet, const std::string& table,
                             const std::string& range) {
    return script(
        "Numbers", "targetDocument",
        "set targetDocument to open POSIX file " + quoted(path) +
            "\n        tell targetDocument\n            set targetSheet to " + sheet +
            "\n            tell targetSheet\n                set targetTable to " + table +
            "\n                tell targetTable\n                    set cellValues to value of cells of range " +
            quoted(range) +
            "\n                end tell\n            end tell\n        end tell\n        close targetDocument "
            "saving no\n        return cellValues");
}

inline std::string setCell(const std::string& name, const std::string& value) {
    return "set value of cell " + quoted(name) + " to " + value;
}

inline std::string createNumbers(const std::string& path, int rows, int columns,
                                 const std::vector<std::string>& statements) {
    return script("Numbers", "newDocument",
                  "set newDocument to make new document with properties {document template:first template}\n        "
                  "tell table 1 of sheet 1 of newDocument\n            set row count to " +
                      std::to_string(rows) + "\n            set column count to " + std::to_string(columns) + "\n" +
                      joined(statements) + "\n        end tell\n        save newDocument in POSIX file " +
                      quoted(path) + "\n        close newDocument saving yes");
}

inline std::string writeRange(const std::string& path, const std::string& sheet, const std::string& table,
                              const std::vector<std::string>& statements) {
    return script("Numbers", "targetDocument",
                  "set targetDocument to open POSIX file " + quoted(path) +
                      "\n        tell targetDocument\n            tell " + sheet + "\n                tell " + table +
                      "\n                    " + joined(statements) +
                      "\n                end tell\n            end tell\n        end tell\n        save "
                      "targetDocument\n        close targetDocument saving yes");
}

struct SlideTexts {
    std::string title;
    std::string body = {}; // none when empty
};

inline std::string createKeynote(const std::string& path, const std::vector<SlideTexts>& slides) {
    std::vector<std::string> statements;
    for (const auto& slide : slides) {
        statements.emplace_back(statements.empty()
                                    ? "set targetSlide to slide 1 of newDocument"
                                    : "set targetSlide to make new slide at end of slides of newDocument");
        statements.back() +=
            "\ntry\n    set object text of default title item of targetSlide to " + quoted(slide.title) + "\nend try\n";
        if (!slide.body.empty())
            statements.back() +=
                "try\nset object text of default body item of targetSlide to " + quoted(slide.body) + "\nend try";
    }
    return script("Keynote", "newDocument",
                  "set newDocument to make new document\n        " + joined(statements) +
                      "\n        save newDocument in POSIX file " + quoted(path) +
                      "\n        close newDocument saving yes");
}

inline std::string exportDocument(const std::string& application, const std::string& input, const std::string& output,
                                  const std::string& type) {
    return script(application, "targetDocument",
                  "set targetDocument to open POSIX file " + quoted(input) +
                      "\n        export targetDocument to POSIX file " + quoted(output) + " as " + type +
                      "\n        close targetDocument saving no");
}

} // namespace bridge::iworkapps
