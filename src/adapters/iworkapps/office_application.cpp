#include "adapters/iworkapps/office_application.h"

#include "adapters/iworkapps/arguments.h"
#include "adapters/iworkapps/command_parameters.h"
#include "adapters/iworkapps/export_type.h"
#include "adapters/iworkapps/model.h"
#include "adapters/iworkapps/refusals.h"

#include <algorithm>

namespace bridge::iworkapps {

namespace {

void requireModel(const Value& value, DocumentKind kind) {
    const auto* object = value.as<ObjectPointer>();
    if (!object || !*object || !(*object)->isSameAs(Model(kind))) cantMakeInto(value, Model::classNameFor(kind));
}

} // namespace

OfficeApplication::OfficeApplication(OfficeSession& session, std::string name, DocumentKind kind, Dictionary dictionary)
    : m_session(session), m_name(std::move(name)), m_kind(kind), m_dictionary(std::move(dictionary)) {}

std::string OfficeApplication::description() const {
    return "application \"" + m_name + '"';
}

Value OfficeApplication::property(const std::string& name, ScriptCall&) {
    if (name == "name") return m_name;
    if (name == "frontmost") return false;
    cantGet(name, *this);
}

void OfficeApplication::setProperty(const std::string& name, const Value& value, ScriptCall&) {
    cantSet(name, *this, value);
}

std::vector<ObjectPointer> OfficeApplication::elements(const std::string& className, ScriptCall&) {
    if (className == "document") return {m_documents.begin(), m_documents.end()};
    if (className == Model::classNameFor(m_kind)) return {std::make_shared<Model>(m_kind)};
    cantGet("every " + className, *this);
}

Value OfficeApplication::perform(const Command& command, ScriptCall& call) {
    if (command.name == "make") return make(command, call);
    if (command.name == "open") return open(command, call);
    if (command.name == "save") return save(command, call);
    if (command.name == "export") return exportDocuments(command, call);
    if (command.name == "close") return close(command, call);
    if (command.name == "quit") return quit(command, call);
    // Without windows there is nothing to be brought to the front, and nobody who would see a difference.
    if (command.name == "activate") return MissingValue{};
    const auto* object = command.direct ? command.direct->as<ObjectPointer>() : nullptr;
    doesNotUnderstand(object && *object ? (*object)->description() : description(), command);
}

void OfficeApplication::scriptEnded() {
    for (const auto& document : m_documents)
        document->forget();
    m_documents.clear();
    m_untitled = 0;
    if (std::exchange(m_hasOffice, false)) m_session.leave();
}

Value OfficeApplication::make(const Command& command, ScriptCall& call) {
    const auto& type = required(command, "new");
    const auto* name = type.as<ClassName>();
    if (!name) cantMakeInto(type, "class");
    if (command.parameter("with data")) cantMakeClass(name->name, "it takes no data.");
    if (name->name == "document") return makeDocument(command, call);
    const auto* at = command.parameter("at");
    const auto* point = at ? at->as<InsertionPoint>() : nullptr;
    if (point && !point->className.empty() && point->className != name->name) cantMakeClass(name->name);
    return container(command, name->name)
        .make(name->name, point ? point->place : InsertionPoint::Place::end, recordParameter(command), call);
}

ObjectPointer OfficeApplication::makeDocument(const Command& command, ScriptCall& call) {
    const auto* properties = recordParameter(command);
    const auto isModel = [&](const auto& property) {
        return property.first == "document " + Model::classNameFor(m_kind);
    };
    if (properties)
        for (const auto& property : **properties)
            if (isModel(property)) requireModel(property.second, m_kind);
    auto& office = this->office(call);
    const auto number = ++m_untitled;
    const auto made = addToFront(office.create(m_kind, call),
                                 number == 1 ? "Untitled" : "Untitled " + std::to_string(number), std::nullopt);
    if (properties)
        for (const auto& property : **properties)
            if (!isModel(property)) made->setProperty(property.first, property.second, call);
    return made;
}

Value OfficeApplication::open(const Command& command, ScriptCall& call) {
    if (!command.direct) isMissing("file", command);
    const auto* files = command.direct->as<List>();
    if (!files) return openFile(pathArgument(*command.direct), call);
    auto opened = std::make_shared<std::vector<Value>>();
    for (const auto& file : **files)
        opened->emplace_back(openFile(pathArgument(file), call));
    return opened;
}

ObjectPointer OfficeApplication::openFile(const std::string& path, ScriptCall& call) {
    const auto open = std::ranges::find_if(m_documents, [&](const auto& document) { return document->path() == path; });
    if (open != m_documents.end()) return *open;
    return addToFront(office(call).open(m_kind, path, call), path.substr(path.rfind('/') + 1), path);
}

Value OfficeApplication::save(const Command& command, ScriptCall& call) {
    if (command.parameter("as")) fails(m_name + " saves in its own format only; use export for another one.");
    const auto path = optionalPath(command, "in");
    for (const auto& document : documentsMeant(command))
        document->save(path, call);
    return MissingValue{};
}

Value OfficeApplication::exportDocuments(const Command& command, ScriptCall& call) {
    const auto path = pathArgument(required(command, "to"));
    const auto format = exportFormat(m_kind, required(command, "as"));
    for (const auto& document : documentsMeant(command))
        document->exportTo(path, format, call);
    return MissingValue{};
}

Value OfficeApplication::close(const Command& command, ScriptCall& call) {
    closeThese(documentsMeant(command), command, call);
    return MissingValue{};
}

Value OfficeApplication::quit(const Command& command, ScriptCall& call) {
    closeThese(m_documents, command, call);
    return MissingValue{};
}

// By value: the list may be that of the application itself.
void OfficeApplication::closeThese(const std::vector<DocumentPointer>& documents, const Command& command,
                                   ScriptCall& call) {
    const auto saving = savingOf(command);
    const auto path = optionalPath(command, "saving in");
    for (const auto& document : std::vector(documents)) {
        document->close(saving, path, call);
        std::erase(m_documents, document);
    }
}

OfficeApplication::DocumentPointer OfficeApplication::addToFront(DocumentID id, std::string name,
                                                                 std::optional<std::string> path) {
    return *m_documents.insert(m_documents.begin(), document(m_session.office(), id, std::move(name), std::move(path)));
}

OfficeDocument& OfficeApplication::container(const Command& command, const std::string& className) const {
    const auto* at = command.parameter("at");
    const auto* point = at ? at->as<InsertionPoint>() : nullptr;
    const auto value = point ? Value(point->container) : at ? *at : command.direct.value_or(MissingValue{});
    const auto* object = value.as<ObjectPointer>();
    const auto open = std::ranges::find(m_documents, object ? *object : nullptr);
    if (open == m_documents.end()) cantMakeClass(className, "a document is needed to make it in.");
    return **open;
}

std::vector<OfficeApplication::DocumentPointer> OfficeApplication::documentsMeant(const Command& command) const {
    if (!command.direct) doesNotUnderstand(description(), command);
    const auto* list = command.direct->as<List>();
    if (!list) return {documentMeant(*command.direct, command)};
    std::vector<DocumentPointer> documents;
    for (const auto& value : **list)
        documents.push_back(documentMeant(value, command));
    return documents;
}

OfficeApplication::DocumentPointer OfficeApplication::documentMeant(const Value& value, const Command& command) const {
    const auto* object = value.as<ObjectPointer>();
    if (!object || !*object) cantMakeInto(value, "document");
    const auto document = std::dynamic_pointer_cast<OfficeDocument>(*object);
    if (!document) doesNotUnderstand((*object)->description(), command);
    if (std::ranges::find(m_documents, document) == m_documents.end()) cantGet(document->description(), *this);
    return document;
}

Office& OfficeApplication::office(ScriptCall& call) {
    if (!m_hasOffice) m_session.enter(call);
    m_hasOffice = true;
    return m_session.office();
}

} // namespace bridge::iworkapps
