#include "app/dashboard/folder_list.h"

#include "app/dashboard/text.h"

namespace bridge {

namespace {

constexpr const char* choosing = "folder";

} // namespace

QVariant FolderRow::value(int role) const {
    switch (role) {
    case Identifier:
        return id;
    case Name:
        return name;
    case Path:
        return path;
    case ReadOnly:
        return readOnly;
    default:
        return {};
    }
}

FolderList::FolderList(BridgeModel& model, Actions& actions, QObject* parent)
    : RowModel(parent), m_model(model), m_actions(actions) {
    m_watches.push_back(model.files.roots.observe([this](const auto&) { read(); }));
    m_watches.push_back(model.readOnlyFolderIDs.observe([this](const auto&) { read(); }));
    connect(&actions, &Actions::changed, this, &FolderList::isChoosingChanged);
    read();
}

QHash<int, QByteArray> FolderList::roleNames() const {
    return {{FolderRow::Identifier, "identifier"},
            {FolderRow::Name, "name"},
            {FolderRow::Path, "path"},
            {FolderRow::ReadOnly, "readOnly"}};
}

void FolderList::read() {
    const auto& readOnly = m_model.readOnlyFolderIDs.get();
    std::vector<FolderRow> wanted;
    for (const auto& root : m_model.files.roots.get())
        wanted.push_back({shown(root.id), shown(root.name), shown(root.path), readOnly.contains(root.id)});
    show(wanted);
    emit countChanged();
}

bool FolderList::isChoosing() const {
    return m_actions.isUnderWay(choosing);
}

void FolderList::add() {
    m_actions.start(choosing, [this] { return m_model.addFolder(); });
}

void FolderList::remove(const QString& identifier) {
    m_actions.start("remove." + identifier, [this, id = identifier.toStdString()] {
        m_model.removeFolder(id);
        return done();
    });
}

} // namespace bridge
