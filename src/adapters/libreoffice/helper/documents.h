#pragma once

#include "adapters/libreoffice/helper/soffice.h"
#include "adapters/libreoffice/protocol.h"

#include <com/sun/star/lang/XComponent.hpp>

#include <map>

namespace bridge::office {

// The documents that are open in LibreOffice, by the numbers that the bridge gives to them.
class Documents {
public:
    explicit Documents(const SOffice& office) : m_office(office) {}

    void create(const CreateDocument& request);
    // Whether it can be stored in the format that it has.
    bool open(const OpenDocument& request);
    // In the OpenDocument format of its kind.
    void store(const StoreDocument& request);
    void close(int64_t document);

    // Throws ScriptError when there is no such document, or when it is of another kind.
    const Ref<css::lang::XComponent>& find(int64_t document) const;
    const Ref<css::lang::XComponent>& find(int64_t document, DocumentKind kind) const;
    DocumentKind kindOf(int64_t document) const;

    bool isEmpty() const { return m_open.empty(); }
    int64_t everOpened() const { return m_everOpened; }
    const SOffice& office() const { return m_office; }

private:
    struct Open {
        Ref<css::lang::XComponent> component;
        DocumentKind kind;
    };
    Ref<css::lang::XComponent> load(const std::string& url, const Arguments& arguments) const;
    void keep(int64_t document, const Ref<css::lang::XComponent>& component, DocumentKind kind);
    const Open& entry(int64_t document) const;

    const SOffice& m_office;
    std::map<int64_t, Open> m_open;
    int64_t m_everOpened = 0;
};

// "file:///documents/..."
std::string fileURL(const std::string& path);
void storeTo(const Ref<css::lang::XComponent>& component, const std::string& path, const char* filter,
             const char* options);

} // namespace bridge::office
