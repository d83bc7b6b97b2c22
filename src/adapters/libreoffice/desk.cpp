#include "adapters/libreoffice/desk.h"

#include "adapters/libreoffice/document_file.h"

namespace bridge::office {

namespace {

// Of a file within the folder of a document.
std::string pathInside(const std::string& folder, const std::string& name) {
    return std::string(folderInside) + "/" + folder + "/" + name;
}

// LibreOffice looks at the extension, too, when it finds out what a file is.
std::string copyNameFor(const std::string& path) {
    const auto dot = path.rfind('.');
    const auto extension = dot == path.npos ? std::string() : path.substr(dot);
    return extension == ".pages" || extension == ".numbers" || extension == ".key" ? "document" + extension
                                                                                   : "document";
}

int64_t number(DocumentID document) {
    return static_cast<int64_t>(document);
}

constexpr const char* storedName = "stored";

} // namespace

Turns::Turn Desk::take(Office::Call& call) {
    try {
        call.check();
        auto turn = m_turns.take(patienceOf(call));
        forgetLost();
        return turn;
    } catch (const PatienceOver&) {
        timeIsOver(call);
    }
}

void Desk::forgetLost() {
    const auto generation = m_client.generation();
    std::vector<DocumentID> lost;
    for (const auto& [id, document] : m_documents)
        if (document.generation != generation) lost.push_back(id);
    for (const auto id : lost)
        remove(id);
}

DeskDocument& Desk::find(DocumentID document) {
    const auto found = m_documents.find(document);
    if (found == m_documents.end()) throw ScriptError(ScriptError::noSuchObject, "The document is not open any more.");
    return found->second;
}

DocumentID Desk::put(DeskDocument document) {
    const DocumentID id{++m_lastDocument};
    m_documents.emplace(id, std::move(document));
    return id;
}

void Desk::remove(DocumentID document) {
    const auto found = m_documents.find(document);
    if (found == m_documents.end()) return;
    m_client.folder().remove(found->second.folder);
    m_documents.erase(found);
}

DocumentID Desk::create(DocumentKind kind, Office::Call& call) {
    const auto id = put({kind, m_client.folder().makeFolder()});
    try {
        m_client.ask(CreateDocument{number(id), kind}, call);
        find(id).generation = m_client.generation();
    } catch (...) {
        remove(id);
        forgetLost();
        throw;
    }
    return id;
}

DocumentID Desk::open(DocumentKind kind, const std::string& path, Office::Call& call) {
    const auto file = openUserFile(path, m_options.largestFile);
    if (!looksLikeDocument(file.file.get()))
        throw ScriptError(failed, quotedName(path) + " could not be opened. It is damaged, or it is no document.");
    auto& folder = m_client.folder();
    const auto id = put({kind, folder.makeFolder(), path, file.identity});
    auto& document = find(id);
    try {
        const auto name = copyNameFor(path);
        copyFile(file, folder.open(document.folder).get(), name);
        document.isStorable = m_client.ask(OpenDocument{number(id), kind, pathInside(document.folder, name)}, call);
        document.generation = m_client.generation();
    } catch (const ScriptError& error) {
        remove(id);
        forgetLost();
        if (error.number() == ScriptError::timedOut || error.number() == notStarted) throw;
        throw ScriptError(error.number().value_or(failed),
                          quotedName(path) + " could not be opened. " + error.message().value_or(error.what()));
    }
    return id;
}

// The document as a file of its usual format.
std::string Desk::stored(DocumentID document, Office::Call& call) {
    const auto folder = find(document).folder;
    ask(StoreDocument{number(document), pathInside(folder, storedName)}, call);
    return readStored(m_client.folder().open(folder).get(), storedName);
}

void Desk::save(DocumentID document, Office::Call& call) {
    auto& entry = find(document);
    if (!entry.path) throw ScriptError(failed, "The document has not been saved yet, so it needs a place first.");
    if (!entry.isStorable)
        throw ScriptError(failed, quotedName(*entry.path) + " was made by another program in a format that can be "
                                                            "read but not written. Export it instead.");
    checkUntouched(*entry.path, entry.identity);
    const auto content = stored(document, call);
    entry.identity = replaceUserFile(*entry.path, entry.identity, content);
}

void Desk::saveAs(DocumentID document, const std::string& path, Office::Call& call) {
    auto& entry = find(document);
    checkFree(path);
    entry.identity = writeNewFile(path, stored(document, call));
    entry.path = path;
    entry.isStorable = true;
}

void Desk::exportTo(DocumentID document, const std::string& path, ExportFormat format, Office::Call& call) {
    checkFree(path);
    const auto folder = find(document).folder;
    constexpr const char* name = "exported";
    ask(ExportDocument{number(document), pathInside(folder, name), format}, call);
    writeNewFile(path, readStored(m_client.folder().open(folder).get(), name));
}

void Desk::close(DocumentID document, Office::Call& call) {
    if (!m_documents.contains(document)) return;
    try {
        m_client.ask(CloseDocument{number(document)}, call);
    } catch (const ScriptError& error) {
        forgetLost();
        if (error.number() != connectionInvalid) throw;
    }
    remove(document);
}

void Desk::closeAll(Office::Call& call) {
    while (!m_documents.empty())
        close(m_documents.begin()->first, call);
}

} // namespace bridge::office
