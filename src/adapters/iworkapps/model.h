#pragma once

#include "adapters/iworkapps/language.h"

namespace bridge::iworkapps {

// What new documents are made from: the template of Pages and Numbers, the theme of Keynote. Each application has one,
// which is blank.
class Model : public Object {
public:
    static std::string classNameFor(DocumentKind kind) {
        return kind == DocumentKind::presentation ? "theme" : "template";
    }

    explicit Model(DocumentKind kind) : m_kind(kind) {}

    std::string className() const override { return classNameFor(m_kind); }
    std::string description() const override { return className() + " \"Blank\""; }
    Value property(const std::string& name, ScriptCall& call) override;
    void setProperty(const std::string& name, const Value& value, ScriptCall& call) override;
    std::vector<ObjectPointer> elements(const std::string& className, ScriptCall& call) override;
    bool isSameAs(const Object& other) const override;

private:
    DocumentKind m_kind;
};

} // namespace bridge::iworkapps
