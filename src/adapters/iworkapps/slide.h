#pragma once

#include "adapters/iworkapps/keynote_document.h"

namespace bridge::iworkapps {

class Slide : public Object {
public:
    // From 0.
    Slide(std::shared_ptr<KeynoteDocument> document, size_t index) : m_document(std::move(document)), m_index(index) {}

    std::string className() const override { return "slide"; }
    std::string description() const override;
    Value property(const std::string& name, ScriptCall& call) override;
    void setProperty(const std::string& name, const Value& value, ScriptCall& call) override;
    std::vector<ObjectPointer> elements(const std::string& className, ScriptCall& call) override;
    bool isSameAs(const Object& other) const override;

private:
    ObjectPointer item(TextItemKind kind, ScriptCall& call);

    std::shared_ptr<KeynoteDocument> m_document;
    size_t m_index;
};

// The title or the body of a slide.
class TextItem : public Object {
public:
    TextItem(std::shared_ptr<KeynoteDocument> document, size_t slide, TextItemKind kind)
        : m_document(std::move(document)), m_slide(slide), m_kind(kind) {}

    static std::string propertyName(TextItemKind kind);

    std::string className() const override { return "shape"; }
    std::string description() const override;
    Value property(const std::string& name, ScriptCall& call) override;
    void setProperty(const std::string& name, const Value& value, ScriptCall& call) override;
    std::vector<ObjectPointer> elements(const std::string& className, ScriptCall& call) override;
    bool isSameAs(const Object& other) const override;

private:
    std::shared_ptr<KeynoteDocument> m_document;
    size_t m_slide;
    TextItemKind m_kind;
};

} // namespace bridge::iworkapps
