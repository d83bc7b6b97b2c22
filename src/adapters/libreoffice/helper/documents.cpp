#include "adapters/libreoffice/helper/documents.h"

#include <com/sun/star/document/MacroExecMode.hpp>
#include <com/sun/star/document/UpdateDocMode.hpp>
#include <com/sun/star/drawing/XDrawPagesSupplier.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/lang/XServiceInfo.hpp>
#include <com/sun/star/task/ErrorCodeIOException.hpp>
#include <com/sun/star/util/CloseVetoException.hpp>
#include <com/sun/star/util/XCloseable.hpp>

#include <array>

namespace bridge::office {

namespace {

struct KindFacts {
    const char* factory;
    const char* service;
    const char* filter;
    const char* name;
};

const KindFacts& factsOf(DocumentKind kind) {
    static constexpr std::array facts{
        KindFacts{"private:factory/swriter", "com.sun.star.text.TextDocument", "writer8", "text document"},
        KindFacts{"private:factory/scalc", "com.sun.star.sheet.SpreadsheetDocument", "calc8", "spreadsheet"},
        KindFacts{"private:factory/simpress", "com.sun.star.presentation.PresentationDocument", "impress8",
                  "presentation"}};
    return facts[static_cast<size_t>(kind)];
}

// Whatever a document says, nothing of it runs, and nothing that it points to is fetched.
Arguments loadArguments() {
    return makeArguments({{"Hidden", css::uno::Any(true)},
                          {"MacroExecutionMode", css::uno::Any(css::document::MacroExecMode::NEVER_EXECUTE)},
                          {"UpdateDocMode", css::uno::Any(css::document::UpdateDocMode::NO_UPDATE)}});
}

std::string filterOf(const Ref<css::lang::XComponent>& component) {
    const auto arguments = as<css::frame::XModel>(component)->getArgs();
    for (const auto& argument : arguments)
        if (argument.Name == "FilterName") return fromUno(argument.Value.get<OUString>());
    return {};
}

// What no other format recognises is taken for text by LibreOffice, and its bytes for letters.
bool isGuess(const std::string& filter) {
    return filter.empty() || filter.starts_with("Text") || filter.find("HTML") != filter.npos;
}

void closeComponent(const Ref<css::lang::XComponent>& component) {
    try {
        as<css::util::XCloseable>(component)->close(true);
    } catch (const css::util::CloseVetoException&) {
        component->dispose();
    }
}

[[noreturn]] void refuse(DocumentKind kind) {
    throw ScriptError(failed, std::string("It is damaged or locked, or it is no ") + factsOf(kind).name + ".");
}

} // namespace

std::string fileURL(const std::string& path) {
    return "file://" + path;
}

void storeTo(const Ref<css::lang::XComponent>& component, const std::string& path, const char* filter,
             const char* options) {
    as<css::frame::XStorable>(component)->storeToURL(
        toUno(fileURL(path)), makeArguments({{"FilterName", css::uno::Any(OUString::createFromAscii(filter))},
                                             {"FilterOptions", css::uno::Any(OUString::createFromAscii(options))},
                                             {"Overwrite", css::uno::Any(true)}}));
}

Ref<css::lang::XComponent> Documents::load(const std::string& url, const Arguments& arguments) const {
    return m_office.desktop()->loadComponentFromURL(toUno(url), "_blank", 0, arguments);
}

void Documents::keep(int64_t document, const Ref<css::lang::XComponent>& component, DocumentKind kind) {
    m_open[document] = {component, kind};
    ++m_everOpened;
}

void Documents::create(const CreateDocument& request) {
    const auto component = load(factsOf(request.kind).factory, loadArguments());
    if (!component.is()) throw ScriptError(failed, "LibreOffice made no new document.");
    if (request.kind == DocumentKind::presentation) {
        // A title and a subtitle, as the first slide of a presentation has them.
        const auto pages = as<css::drawing::XDrawPagesSupplier>(component)->getDrawPages();
        setProperty(element<css::uno::XInterface>(pages, 0), "Layout", css::uno::Any(sal_Int16(0)));
    }
    keep(request.document, component, request.kind);
}

bool Documents::open(const OpenDocument& request) {
    Ref<css::lang::XComponent> component;
    try {
        component = load(fileURL(request.path), loadArguments());
    } catch (const css::io::IOException&) {
        refuse(request.kind);
    } catch (const css::lang::IllegalArgumentException&) {
        refuse(request.kind);
    }
    if (!component.is()) refuse(request.kind);
    const auto& facts = factsOf(request.kind);
    const auto filter = filterOf(component);
    if (isGuess(filter) ||
        !as<css::lang::XServiceInfo>(component)->supportsService(OUString::createFromAscii(facts.service))) {
        closeComponent(component);
        refuse(request.kind);
    }
    keep(request.document, component, request.kind);
    return filter == facts.filter;
}

void Documents::store(const StoreDocument& request) {
    const auto& [component, kind] = entry(request.document);
    storeTo(component, request.path, factsOf(kind).filter, "");
}

void Documents::close(int64_t document) {
    const auto found = m_open.find(document);
    if (found == m_open.end()) return;
    const auto component = found->second.component;
    m_open.erase(found);
    closeComponent(component);
}

const Documents::Open& Documents::entry(int64_t document) const {
    const auto found = m_open.find(document);
    if (found == m_open.end()) throw ScriptError(ScriptError::noSuchObject, "The document is not open any more.");
    return found->second;
}

const Ref<css::lang::XComponent>& Documents::find(int64_t document) const {
    return entry(document).component;
}

DocumentKind Documents::kindOf(int64_t document) const {
    return entry(document).kind;
}

const Ref<css::lang::XComponent>& Documents::find(int64_t document, DocumentKind kind) const {
    const auto& open = entry(document);
    if (open.kind != kind)
        throw ScriptError(ScriptError::noSuchObject, std::string("The document is no ") + factsOf(kind).name + ".");
    return open.component;
}

} // namespace bridge::office
