#pragma once

#include "adapters/iworkapps/office_application.h"

namespace bridge::iworkapps {

// "Keynote": presentations of slides, each with a title item and a body item as far as its layout has them.
class KeynoteApplication : public OfficeApplication {
public:
    explicit KeynoteApplication(OfficeSession& session);

private:
    DocumentPointer document(Office& office, DocumentID id, std::string name, std::optional<std::string> path) override;
};

} // namespace bridge::iworkapps
