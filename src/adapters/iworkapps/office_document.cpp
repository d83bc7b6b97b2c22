#include "adapters/iworkapps/office_document.h"

#include "adapters/iworkapps/refusals.h"

namespace bridge::iworkapps {

OfficeDocument::OfficeDocument(Office& office, DocumentID id, std::string name, std::optional<std::string> path)
    : m_office(office), m_id(id), m_name(std::move(name)), m_path(std::move(path)) {}

std::string OfficeDocument::description() const {
    return "document \"" + m_name + '"';
}

Value OfficeDocument::property(const std::string& name, ScriptCall&) {
    requireOpen();
    if (name == "name") return m_name;
    if (name == "id") return std::to_string(static_cast<int64_t>(m_id));
    if (name == "modified") return m_isModified;
    if (name == "file") return m_path ? Value(File{*m_path}) : Value(MissingValue{});
    cantGet(name, *this);
}

void OfficeDocument::setProperty(const std::string& name, const Value& value, ScriptCall&) {
    requireOpen();
    cantSet(name, *this, value);
}

std::vector<ObjectPointer> OfficeDocument::elements(const std::string& className, ScriptCall&) {
    requireOpen();
    cantGet("every " + className, *this);
}

ObjectPointer OfficeDocument::make(const std::string& className, InsertionPoint::Place, const Record*, ScriptCall&) {
    cantMakeClass(className);
}

void OfficeDocument::save(const std::optional<std::string>& path, ScriptCall& call) {
    auto& office = this->office(call);
    if (!path && !m_path)
        fails("Can’t save " + description() + ": it was never saved, so it needs a file to be saved in.");
    if (!path || path == m_path) {
        office.save(m_id, call);
    } else {
        office.saveAs(m_id, *path, call);
        m_path = path;
        m_name = path->substr(path->rfind('/') + 1);
    }
    m_isModified = false;
}

void OfficeDocument::exportTo(const std::string& path, ExportFormat format, ScriptCall& call) {
    office(call).exportTo(m_id, path, format, call);
}

void OfficeDocument::close(Saving saving, const std::optional<std::string>& path, ScriptCall& call) {
    requireOpen();
    if (saving == Saving::ask && m_isModified)
        cantAsk("Can’t close " + description() +
                ": it has changes, and nobody is there to be asked about them. Say saving yes or saving no.");
    if (saving == Saving::yes && (m_isModified || path || !m_path)) save(path, call);
    // What is still kept back goes with it.
    m_office.close(m_id, call);
    m_isOpen = false;
}

Office& OfficeDocument::office(ScriptCall& call) {
    requireOpen();
    flush(call);
    return m_office;
}

void OfficeDocument::requireOpen() const {
    if (!m_isOpen) cantGet(description());
}

} // namespace bridge::iworkapps
