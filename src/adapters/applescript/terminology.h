#pragma once

#include "adapters/applescript/dictionary.h"
#include "adapters/applescript/token.h"

#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace bridge::applescript {

using Words = std::vector<std::string>;

// What a word, or several, can mean; often more than one of these.
struct Term {
    std::string className; // "slide" for "slides", too; empty when it names no class
    bool isPlural = false;
    bool isProperty = false;
    bool isConstant = false;
    bool isCommand = false;
    std::string name; // as it is written, with one space between words
    Words words;
};

// The words of the language and of one application, ready to be recognised. Never changes once it's made.
class Terminology {
public:
    // Of the language alone.
    Terminology();
    explicit Terminology(const Dictionary& dictionary);
    Terminology(const Terminology&) = delete;
    Terminology& operator=(const Terminology&) = delete;

    // The longest term that begins at the token; nullptr when none does.
    const Term* termAt(const Token* tokens) const;

    // Labels of the command's parameters.
    const std::vector<Words>& labels(const std::string& command) const;

private:
    void add(const Dictionary& dictionary);
    void addCommand(const CommandTerms& command);
    Term& term(const std::string& name);
    void index();

    std::map<std::string, Term> m_terms;
    std::unordered_map<std::string, std::vector<const Term*>> m_byFirstWord; // longest first
    std::map<std::string, std::vector<Words>> m_labels;
};

// Whether all of the words stand there.
bool standAt(const Words& words, const Token* tokens);

} // namespace bridge::applescript
