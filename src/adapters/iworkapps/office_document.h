#pragma once

#include "adapters/iworkapps/language.h"

#include <memory>
#include <optional>
#include <string>

namespace bridge::iworkapps {

// A document that a script has open. It is gone when it was closed, and at the latest when the script ends; variables
// may hold it longer and get -1728 for whatever they ask.
class OfficeDocument : public Object, public std::enable_shared_from_this<OfficeDocument> {
public:
    enum class Saving { yes, no, ask };

    // The path is where it was opened, absent for a new one.
    OfficeDocument(Office& office, DocumentID id, std::string name, std::optional<std::string> path);

    std::string className() const override { return "document"; }
    std::string description() const override;
    Value property(const std::string& name, ScriptCall& call) override;
    void setProperty(const std::string& name, const Value& value, ScriptCall& call) override;
    std::vector<ObjectPointer> elements(const std::string& className, ScriptCall& call) override;

    // Makes an element of it. Here none can be made.
    virtual ObjectPointer make(const std::string& className, InsertionPoint::Place place, const Record* properties,
                               ScriptCall& call);

    // In the file, which must not exist unless it is its own; or where it was opened or saved last.
    void save(const std::optional<std::string>& path, ScriptCall& call);
    void exportTo(const std::string& path, ExportFormat format, ScriptCall& call);
    // What was saved and has not changed since isn't written again. With changes, "ask" fails: nobody can be asked.
    void close(Saving saving, const std::optional<std::string>& path, ScriptCall& call);
    // It was closed by other means.
    void forget() { m_isOpen = false; }

    bool isOpen() const { return m_isOpen; }
    const std::optional<std::string>& path() const { return m_path; }
    DocumentID id() const { return m_id; }

protected:
    // To be asked for something of this document, which is open and has received all that was kept back.
    Office& office(ScriptCall& call);
    Office& officeBeforeFlush() { return m_office; }
    void requireOpen() const;
    void markChanged() { m_isModified = true; }

private:
    // Sends what is kept back for the sake of speed.
    virtual void flush(ScriptCall&) {}

    Office& m_office;
    DocumentID m_id;
    std::string m_name;
    std::optional<std::string> m_path;
    bool m_isModified = false;
    bool m_isOpen = true;
};

} // namespace bridge::iworkapps
