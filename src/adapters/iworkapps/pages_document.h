#pragma once

#include "adapters/iworkapps/office_document.h"

namespace bridge::iworkapps {

class PagesDocument : public OfficeDocument {
public:
    using OfficeDocument::OfficeDocument;

    Value property(const std::string& name, ScriptCall& call) override;
    void setProperty(const std::string& name, const Value& value, ScriptCall& call) override;
};

} // namespace bridge::iworkapps
