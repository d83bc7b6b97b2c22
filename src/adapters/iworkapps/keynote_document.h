#pragma once

#include "adapters/iworkapps/office_document.h"

#include <optional>
#include <vector>

namespace bridge::iworkapps {

// The two places of a slide that texts go to.
enum class TextItemKind { title, body };

class KeynoteDocument : public OfficeDocument {
public:
    using OfficeDocument::OfficeDocument;

    std::vector<ObjectPointer> elements(const std::string& className, ScriptCall& call) override;
    ObjectPointer elementAt(const std::string& className, size_t position, ScriptCall& call) override;
    size_t count(const std::string& className, ScriptCall& call) override;
    // Slides, at the end only.
    ObjectPointer make(const std::string& className, InsertionPoint::Place place, const Record* properties,
                       ScriptCall& call) override;

    // Of a slide, from 0.
    bool hasItem(size_t slide, TextItemKind kind, ScriptCall& call);
    std::string itemText(size_t slide, TextItemKind kind, ScriptCall& call);
    void setItemText(size_t slide, TextItemKind kind, const std::string& text, ScriptCall& call);

private:
    struct Layout {
        bool hasTitle, hasBody;
    };
    // Asked for once: only this script adds slides. Texts are asked for whenever they are needed.
    std::vector<Layout>& layouts(ScriptCall& call);
    ObjectPointer slide(size_t index);

    std::optional<std::vector<Layout>> m_layouts;
};

} // namespace bridge::iworkapps
