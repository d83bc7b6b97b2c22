#pragma once

#include "adapters/iworkapps/office_document.h"
#include "adapters/iworkapps/office_session.h"

#include <memory>
#include <vector>

namespace bridge::iworkapps {

// What Pages, Numbers and Keynote have in common: documents that a script makes, opens, saves, exports and closes.
// They have no window, so they are never frontmost. A script's documents live as long as the script.
class OfficeApplication : public applescript::Application {
public:
    std::string name() const override { return m_name; }
    const Dictionary& dictionary() const override { return m_dictionary; }
    bool isRunning() const override { return m_session.office().isRunning(); }
    std::string className() const override { return "application"; }
    std::string description() const override;

    Value property(const std::string& name, ScriptCall& call) override;
    void setProperty(const std::string& name, const Value& value, ScriptCall& call) override;
    std::vector<ObjectPointer> elements(const std::string& className, ScriptCall& call) override;
    Value perform(const Command& command, ScriptCall& call) override;
    void scriptEnded() override;

protected:
    using DocumentPointer = std::shared_ptr<OfficeDocument>;

    OfficeApplication(OfficeSession& session, std::string name, DocumentKind kind, Dictionary dictionary);

private:
    virtual DocumentPointer document(Office& office, DocumentID id, std::string name,
                                     std::optional<std::string> path) = 0;

    Value make(const Command& command, ScriptCall& call);
    Value open(const Command& command, ScriptCall& call);
    Value save(const Command& command, ScriptCall& call);
    Value exportDocuments(const Command& command, ScriptCall& call);
    Value close(const Command& command, ScriptCall& call);
    Value quit(const Command& command, ScriptCall& call);

    ObjectPointer makeDocument(const Command& command, ScriptCall& call);
    ObjectPointer openFile(const std::string& path, ScriptCall& call);
    DocumentPointer addToFront(DocumentID id, std::string name, std::optional<std::string> path);
    void closeThese(const std::vector<DocumentPointer>& documents, const Command& command, ScriptCall& call);
    // The one that something is to be made in, or -2710.
    OfficeDocument& container(const Command& command, const std::string& className) const;
    std::vector<DocumentPointer> documentsMeant(const Command& command) const;
    DocumentPointer documentMeant(const Value& value, const Command& command) const;
    // From here on the script has the office program for itself.
    Office& office(ScriptCall& call);

    OfficeSession& m_session;
    std::string m_name;
    DocumentKind m_kind;
    Dictionary m_dictionary;
    std::vector<DocumentPointer> m_documents; // front to back
    bool m_hasOffice = false;
    int m_untitled = 0; // how many were made
};

} // namespace bridge::iworkapps
