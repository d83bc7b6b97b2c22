#pragma once

#include "adapters/libreoffice/helper/documents.h"

#include <string>

namespace bridge::office {

// What one request is answered with.
struct Answered {
    std::string reply;
    enum class Then { goOn, leave } then = Then::goOn;
};

// Turns requests into calls of LibreOffice.
class Service {
public:
    explicit Service(const SOffice& office) : m_office(office), m_documents(office) {}

    // Never throws: what fails is a reply. When LibreOffice itself has failed there is nothing left but to leave.
    Answered answer(const std::string& request);
    const Documents& documents() const { return m_documents; }

private:
    const SOffice& m_office;
    Documents m_documents;
};

} // namespace bridge::office
