#include "adapters/iworkapps/keynote_document.h"

#include "adapters/iworkapps/refusals.h"
#include "adapters/iworkapps/slide.h"

namespace bridge::iworkapps {

std::vector<ObjectPointer> KeynoteDocument::elements(const std::string& className, ScriptCall& call) {
    if (className != "slide") return OfficeDocument::elements(className, call);
    std::vector<ObjectPointer> slides;
    for (size_t index = 0; index < layouts(call).size(); ++index)
        slides.push_back(slide(index));
    return slides;
}

ObjectPointer KeynoteDocument::elementAt(const std::string& className, size_t position, ScriptCall& call) {
    if (className != "slide") return OfficeDocument::elementAt(className, position, call);
    return position >= 1 && position <= layouts(call).size() ? slide(position - 1) : nullptr;
}

size_t KeynoteDocument::count(const std::string& className, ScriptCall& call) {
    return className == "slide" ? layouts(call).size() : OfficeDocument::count(className, call);
}

ObjectPointer KeynoteDocument::make(const std::string& className, InsertionPoint::Place place, const Record* properties,
                                    ScriptCall& call) {
    if (className != "slide") return OfficeDocument::make(className, place, properties, call);
    if (place != InsertionPoint::Place::end) cantMakeClass(className, "new slides come at the end.");
    if (properties && !(*properties)->empty())
        cantMakeClass(className, "its " + (*properties)->front().first + " can’t be set.");
    auto& known = layouts(call);
    markChanged();
    office(call).addSlide(id(), call);
    known.push_back({true, true});
    return slide(known.size() - 1);
}

bool KeynoteDocument::hasItem(size_t slide, TextItemKind kind, ScriptCall& call) {
    requireOpen();
    const auto& layout = layouts(call).at(slide);
    return kind == TextItemKind::title ? layout.hasTitle : layout.hasBody;
}

std::string KeynoteDocument::itemText(size_t slide, TextItemKind kind, ScriptCall& call) {
    const auto slides = office(call).slides(id(), call);
    if (slide >= slides.size()) cantGet("slide " + std::to_string(slide + 1), *this);
    return kind == TextItemKind::title ? slides[slide].title : slides[slide].body;
}

void KeynoteDocument::setItemText(size_t slide, TextItemKind kind, const std::string& text, ScriptCall& call) {
    auto& office = this->office(call);
    markChanged();
    const auto index = static_cast<int32_t>(slide);
    if (kind == TextItemKind::title)
        office.setSlideTitle(id(), index, text, call);
    else
        office.setSlideBody(id(), index, text, call);
}

std::vector<KeynoteDocument::Layout>& KeynoteDocument::layouts(ScriptCall& call) {
    requireOpen();
    if (!m_layouts) {
        std::vector<Layout> layouts;
        for (const auto& slide : office(call).slides(id(), call))
            layouts.push_back({slide.hasTitle, slide.hasBody});
        m_layouts = std::move(layouts);
    }
    return *m_layouts;
}

ObjectPointer KeynoteDocument::slide(size_t index) {
    return std::make_shared<Slide>(std::static_pointer_cast<KeynoteDocument>(shared_from_this()), index);
}

} // namespace bridge::iworkapps
