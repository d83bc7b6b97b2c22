#include "adapters/iworkapps/numbers_application.h"

#include "adapters/iworkapps/numbers_document.h"
#include "adapters/iworkapps/range.h"
#include "adapters/iworkapps/terms.h"

namespace bridge::iworkapps {

namespace {

Dictionary terms() {
    auto terms = commonTerms(DocumentKind::spreadsheet, {"active sheet"}, {"sheet"});
    const std::vector<ClassTerms> own{
        {"sheet", "sheets", {"name"}, {"table"}},
        {"table", "tables", {"name", "row count", "column count", "cell range"}, {"row", "column", "cell", "range"}},
        {"range", "ranges", {"name"}, {"row", "column", "cell"}},
        {"row", "rows", {"address"}, {}, "range"},
        {"column", "columns", {"address"}, {}, "range"},
        {"cell", "cells", {"value", "row", "column"}, {}, "range"},
    };
    terms.classes.insert(terms.classes.end(), own.begin(), own.end());
    terms.commands.push_back({"clear", {}});
    return terms;
}

} // namespace

NumbersApplication::NumbersApplication(OfficeSession& session)
    : OfficeApplication(session, "Numbers", DocumentKind::spreadsheet, terms()) {}

Value NumbersApplication::perform(const Command& command, ScriptCall& call) {
    const auto* object = command.direct ? command.direct->as<ObjectPointer>() : nullptr;
    const auto range = object ? std::dynamic_pointer_cast<Range>(*object) : nullptr;
    if (command.name != "clear" || !range) return OfficeApplication::perform(command, call);
    range->clear(call);
    return MissingValue{};
}

OfficeApplication::DocumentPointer NumbersApplication::document(Office& office, DocumentID id, std::string name,
                                                                std::optional<std::string> path) {
    return std::make_shared<NumbersDocument>(office, id, std::move(name), std::move(path));
}

} // namespace bridge::iworkapps
