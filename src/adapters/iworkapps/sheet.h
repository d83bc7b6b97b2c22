#pragma once

#include "adapters/iworkapps/numbers_document.h"

namespace bridge::iworkapps {

class Sheet : public Object {
public:
    Sheet(std::shared_ptr<NumbersDocument> document, int32_t index, std::string name)
        : m_document(std::move(document)), m_index(index), m_name(std::move(name)) {}

    std::string className() const override { return "sheet"; }
    std::string description() const override;
    Value property(const std::string& name, ScriptCall& call) override;
    void setProperty(const std::string& name, const Value& value, ScriptCall& call) override;
    std::vector<ObjectPointer> elements(const std::string& className, ScriptCall& call) override;
    bool isSameAs(const Object& other) const override;

private:
    std::shared_ptr<NumbersDocument> m_document;
    int32_t m_index;
    std::string m_name;
};

} // namespace bridge::iworkapps
