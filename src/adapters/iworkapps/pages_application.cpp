#include "adapters/iworkapps/pages_application.h"

#include "adapters/iworkapps/pages_document.h"
#include "adapters/iworkapps/terms.h"

namespace bridge::iworkapps {

PagesApplication::PagesApplication(OfficeSession& session)
    : OfficeApplication(session, "Pages", DocumentKind::text, commonTerms(DocumentKind::text, {"body text"}, {})) {}

OfficeApplication::DocumentPointer PagesApplication::document(Office& office, DocumentID id, std::string name,
                                                              std::optional<std::string> path) {
    return std::make_shared<PagesDocument>(office, id, std::move(name), std::move(path));
}

} // namespace bridge::iworkapps
