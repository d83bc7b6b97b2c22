#include "adapters/iworkapps/keynote_application.h"

#include "adapters/iworkapps/keynote_document.h"
#include "adapters/iworkapps/terms.h"

namespace bridge::iworkapps {

namespace {

Dictionary terms() {
    auto terms = commonTerms(DocumentKind::presentation, {}, {"slide"});
    terms.classes.push_back(
        {"slide",
         "slides",
         {"slide number", "title showing", "body showing", "default title item", "default body item"},
         {}});
    terms.classes.push_back({"shape", "shapes", {"object text"}, {}});
    return terms;
}

} // namespace

KeynoteApplication::KeynoteApplication(OfficeSession& session)
    : OfficeApplication(session, "Keynote", DocumentKind::presentation, terms()) {}

OfficeApplication::DocumentPointer KeynoteApplication::document(Office& office, DocumentID id, std::string name,
                                                                std::optional<std::string> path) {
    return std::make_shared<KeynoteDocument>(office, id, std::move(name), std::move(path));
}

} // namespace bridge::iworkapps
