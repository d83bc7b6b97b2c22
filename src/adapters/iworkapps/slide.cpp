#include "adapters/iworkapps/slide.h"

#include "adapters/iworkapps/arguments.h"
#include "adapters/iworkapps/refusals.h"

namespace bridge::iworkapps {

namespace {

std::string slideText(const KeynoteDocument& document, size_t index) {
    return "slide " + std::to_string(index + 1) + " of " + document.description();
}

} // namespace

std::string Slide::description() const {
    return slideText(*m_document, m_index);
}

Value Slide::property(const std::string& name, ScriptCall& call) {
    if (name == "slide number") return static_cast<int64_t>(m_index + 1);
    if (name == "title showing") return m_document->hasItem(m_index, TextItemKind::title, call);
    if (name == "body showing") return m_document->hasItem(m_index, TextItemKind::body, call);
    for (const auto kind : {TextItemKind::title, TextItemKind::body})
        if (name == TextItem::propertyName(kind)) return item(kind, call);
    cantGet(name, *this);
}

void Slide::setProperty(const std::string& name, const Value& value, ScriptCall&) {
    cantSet(name, *this, value);
}

std::vector<ObjectPointer> Slide::elements(const std::string& className, ScriptCall&) {
    cantGet("every " + className, *this);
}

bool Slide::isSameAs(const Object& other) const {
    const auto* slide = dynamic_cast<const Slide*>(&other);
    return slide && slide->m_document == m_document && slide->m_index == m_index;
}

ObjectPointer Slide::item(TextItemKind kind, ScriptCall& call) {
    if (!m_document->hasItem(m_index, kind, call)) cantGet(TextItem::propertyName(kind), *this);
    return std::make_shared<TextItem>(m_document, m_index, kind);
}

std::string TextItem::propertyName(TextItemKind kind) {
    return kind == TextItemKind::title ? "default title item" : "default body item";
}

std::string TextItem::description() const {
    return propertyName(m_kind) + " of " + slideText(*m_document, m_slide);
}

Value TextItem::property(const std::string& name, ScriptCall& call) {
    if (name != "object text") cantGet(name, *this);
    return m_document->itemText(m_slide, m_kind, call);
}

void TextItem::setProperty(const std::string& name, const Value& value, ScriptCall& call) {
    if (name != "object text") cantSet(name, *this, value);
    m_document->setItemText(m_slide, m_kind, textArgument(value), call);
}

std::vector<ObjectPointer> TextItem::elements(const std::string& className, ScriptCall&) {
    cantGet("every " + className, *this);
}

bool TextItem::isSameAs(const Object& other) const {
    const auto* item = dynamic_cast<const TextItem*>(&other);
    return item && item->m_document == m_document && item->m_slide == m_slide && item->m_kind == m_kind;
}

} // namespace bridge::iworkapps
