#pragma once

#include "adapters/libreoffice/office_client.h"
#include "adapters/libreoffice/turn.h"
#include "adapters/libreoffice/user_file.h"

#include <map>
#include <optional>

namespace bridge::office {

// A document that is open: a copy of the user's file that LibreOffice works on.
struct DeskDocument {
    DocumentKind kind;
    std::string folder; // of the copy, within the work folder
    // Where it was opened or saved last, and what was there then.
    std::optional<std::string> path = std::nullopt;
    FileIdentity identity = {};
    bool isStorable = true;
    int64_t generation = 0; // of the program that has it open
};

// The documents that are open, and whose turn it is.
class Desk {
public:
    explicit Desk(const LibreOfficeOptions& options) : m_options(options), m_client(options) {}

    // Until the turn ends nobody else does anything here. Documents that were lost meanwhile are gone from the desk.
    // Throws ScriptError::timedOut.
    Turns::Turn take(Office::Call& call);

    DocumentID create(DocumentKind kind, Office::Call& call);
    DocumentID open(DocumentKind kind, const std::string& path, Office::Call& call);
    void save(DocumentID document, Office::Call& call);
    void saveAs(DocumentID document, const std::string& path, Office::Call& call);
    void exportTo(DocumentID document, const std::string& path, ExportFormat format, Office::Call& call);
    void close(DocumentID document, Office::Call& call);
    void closeAll(Office::Call& call);

    // A request about a document that is on the desk. Throws noSuchObject when it isn't.
    template <typename Arguments> typename Arguments::Result ask(const Arguments& arguments, Office::Call& call) {
        find(static_cast<DocumentID>(arguments.document));
        return guarded([&] { return m_client.ask(arguments, call); });
    }

    OfficeClient& client() { return m_client; }
    const OfficeClient& client() const { return m_client; }

private:
    DeskDocument& find(DocumentID document);
    DocumentID put(DeskDocument document);
    void remove(DocumentID document);
    void forgetLost();
    std::string stored(DocumentID document, Office::Call& call);

    // What fails may have taken all documents along.
    template <typename Work> auto guarded(const Work& work) {
        try {
            return work();
        } catch (const ScriptError&) {
            forgetLost();
            throw;
        }
    }

    const LibreOfficeOptions m_options;
    Turns m_turns;
    OfficeClient m_client;
    int64_t m_lastDocument = 0;
    std::map<DocumentID, DeskDocument> m_documents;
};

} // namespace bridge::office
