#pragma once

#include "adapters/iworkapps/office_application.h"

namespace bridge::iworkapps {

// "Pages": documents with a body text.
class PagesApplication : public OfficeApplication {
public:
    explicit PagesApplication(OfficeSession& session);

private:
    DocumentPointer document(Office& office, DocumentID id, std::string name, std::optional<std::string> path) override;
};

} // namespace bridge::iworkapps
