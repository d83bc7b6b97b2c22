#pragma once

#include "adapters/iworkapps/office_application.h"

namespace bridge::iworkapps {

// "Numbers": documents of sheets, which have tables, which have cells.
class NumbersApplication : public OfficeApplication {
public:
    explicit NumbersApplication(OfficeSession& session);

    Value perform(const Command& command, ScriptCall& call) override;

private:
    DocumentPointer document(Office& office, DocumentID id, std::string name, std::optional<std::string> path) override;
};

} // namespace bridge::iworkapps
