#include "adapters/applescript/terminology.h"

#include "adapters/applescript/lexer.h"

#include <algorithm>

namespace bridge::applescript {

namespace {

const Dictionary language{
    .classes = {{"item",
                 "items",
                 {"name", "id", "class", "length", "reverse", "rest", "contents", "properties", "version",
                  "posix path"},
                 {}},
                {"character", "characters", {}, {}},
                {"word", "words", {}, {}},
                {"paragraph", "paragraphs", {}, {}},
                {"text", "", {}, {}},
                {"integer", "integers", {}, {}},
                {"real", "reals", {}, {}},
                {"number", "numbers", {}, {}},
                {"boolean", "booleans", {}, {}},
                {"list", "lists", {}, {}},
                {"record", "records", {}, {}},
                {"constant", "constants", {}, {}}},
    .commands = {{"make", {"new", "at", "with data", "with properties"}},
                 {"duplicate", {"to", "with properties"}},
                 {"delete", {}},
                 {"open", {}},
                 {"save", {"in", "as"}},
                 {"close", {"saving", "saving in"}},
                 {"quit", {"saving"}},
                 {"activate", {}}},
    .constants = {"yes", "no", "ask"},
};

Words split(const std::string& name) {
    Words words;
    for (const auto& token : Lexer(name).tokens())
        if (token.kind == TokenKind::word) words.push_back(token.text);
    return words;
}

} // namespace

Terminology::Terminology() {
    add(language);
    for (const auto* alias : {"string", "strings", "unicode text"})
        term(alias).className = "text";
    term("strings").isPlural = true;
    index();
}

Terminology::Terminology(const Dictionary& dictionary) : Terminology() {
    add(dictionary);
    index();
}

Term& Terminology::term(const std::string& name) {
    auto& known = m_terms[name];
    if (known.words.empty()) {
        known.name = name;
        known.words = split(name);
    }
    return known;
}

void Terminology::add(const Dictionary& dictionary) {
    for (const auto& terms : dictionary.classes) {
        term(terms.name).className = terms.name;
        if (!terms.plural.empty() && terms.plural != terms.name) {
            term(terms.plural).className = terms.name;
            term(terms.plural).isPlural = true;
        }
        for (const auto& property : terms.properties)
            term(property).isProperty = true;
    }
    for (const auto& command : dictionary.commands)
        addCommand(command);
    for (const auto& constant : dictionary.constants)
        term(constant).isConstant = true;
}

void Terminology::addCommand(const CommandTerms& command) {
    term(command.name).isCommand = true;
    auto& labels = m_labels[command.name];
    for (const auto& label : command.parameters)
        labels.push_back(split(label));
    std::stable_sort(labels.begin(), labels.end(),
                     [](const Words& one, const Words& other) { return one.size() > other.size(); });
}

void Terminology::index() {
    m_byFirstWord.clear();
    for (const auto& [name, term] : m_terms)
        if (!term.words.empty()) m_byFirstWord[term.words.front()].push_back(&term);
    for (auto& [word, terms] : m_byFirstWord)
        std::stable_sort(terms.begin(), terms.end(),
                         [](const Term* one, const Term* other) { return one->words.size() > other->words.size(); });
}

const Term* Terminology::termAt(const Token* tokens) const {
    if (tokens->kind != TokenKind::word) return nullptr;
    const auto candidates = m_byFirstWord.find(tokens->text);
    if (candidates == m_byFirstWord.end()) return nullptr;
    for (const auto* term : candidates->second)
        if (standAt(term->words, tokens)) return term;
    return nullptr;
}

const std::vector<Words>& Terminology::labels(const std::string& command) const {
    return m_labels.at(command);
}

bool standAt(const Words& words, const Token* tokens) {
    return std::all_of(words.begin(), words.end(), [&](const std::string& word) { return (tokens++)->isWord(word); });
}

} // namespace bridge::applescript
