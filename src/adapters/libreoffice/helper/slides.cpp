#include "adapters/libreoffice/helper/slides.h"

#include <com/sun/star/drawing/XDrawPage.hpp>
#include <com/sun/star/drawing/XDrawPagesSupplier.hpp>
#include <com/sun/star/drawing/XShape.hpp>
#include <com/sun/star/text/XText.hpp>

namespace bridge::office {

namespace {

Ref<css::drawing::XDrawPages> pagesOf(const Ref<css::lang::XComponent>& document) {
    return as<css::drawing::XDrawPagesSupplier>(document)->getDrawPages();
}

std::string typeOf(const Ref<css::drawing::XShape>& shape) {
    // Deprecated in favour of the services, which these shapes do not tell.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
    const auto name = fromUno(shape->getShapeType());
#pragma GCC diagnostic pop
    return name.substr(name.rfind('.') + 1);
}

// The shape that has the title, or the first that a layout has for what a slide says; empty when there is none.
Ref<css::drawing::XShape> placeFor(SlidePart part, const Ref<css::drawing::XDrawPage>& page) {
    for (sal_Int32 position = 0; position < page->getCount(); ++position) {
        const auto shape = element<css::drawing::XShape>(page, position);
        const auto type = typeOf(shape);
        if (part == SlidePart::title ? type == "TitleTextShape" : type == "OutlinerShape" || type == "SubtitleShape")
            return shape;
    }
    return {};
}

std::string textOf(const Ref<css::drawing::XShape>& shape) {
    return shape.is() ? fromUno(as<css::text::XText>(shape)->getString()) : std::string();
}

} // namespace

std::vector<Slide> slides(const Ref<css::lang::XComponent>& document) {
    const auto pages = pagesOf(document);
    std::vector<Slide> found;
    for (sal_Int32 position = 0; position < pages->getCount(); ++position) {
        const auto page = element<css::drawing::XDrawPage>(pages, position);
        const auto title = placeFor(SlidePart::title, page);
        const auto body = placeFor(SlidePart::body, page);
        found.push_back({title.is(), body.is(), textOf(title), textOf(body)});
    }
    return found;
}

void addSlide(const Ref<css::lang::XComponent>& document) {
    const auto pages = pagesOf(document);
    const auto page = pages->insertNewByIndex(pages->getCount());
    constexpr sal_Int16 titleAndContent = 1;
    setProperty(page, "Layout", css::uno::Any(titleAndContent));
}

void setSlideText(const Ref<css::lang::XComponent>& document, const SetSlideText& request) {
    const auto pages = pagesOf(document);
    if (request.slide < 0 || request.slide >= pages->getCount())
        throw ScriptError(ScriptError::noSuchObject, "There is no such slide.");
    const auto shape = placeFor(request.part, element<css::drawing::XDrawPage>(pages, request.slide));
    if (!shape.is())
        throw ScriptError(ScriptError::noSuchObject, request.part == SlidePart::title
                                                         ? "The slide has no room for a title."
                                                         : "The slide has no room for a body.");
    as<css::text::XText>(shape)->setString(toUno(request.text));
}

} // namespace bridge::office
