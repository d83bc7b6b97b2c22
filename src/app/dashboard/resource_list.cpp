#include "app/dashboard/resource_list.h"

#include "app/dashboard/text.h"

namespace bridge {

QVariant ResourceRow::value(int role) const {
    switch (role) {
    case Identifier:
        return id;
    case Title:
        return title;
    case Account:
        return account;
    case Authorized:
        return authorized;
    default:
        return {};
    }
}

ResourceList::ResourceList(BridgeModel& model, Actions& actions, Kind kind, QObject* parent)
    : RowModel(parent), m_model(model), m_actions(actions), m_kind(kind) {
    const auto again = [this](const auto&) { read(); };
    m_watches.push_back((kind == calendars ? model.calendars : model.reminderLists).observe(again));
    m_watches.push_back((kind == calendars ? model.allowedCalendarIDs : model.allowedReminderListIDs).observe(again));
    connect(&actions, &Actions::changed, this, &ResourceList::isBusyChanged);
    read();
}

QHash<int, QByteArray> ResourceList::roleNames() const {
    return {{ResourceRow::Identifier, "identifier"},
            {ResourceRow::Title, "title"},
            {ResourceRow::Account, "account"},
            {ResourceRow::Authorized, "authorized"}};
}

int ResourceList::authorizedCount() const {
    return static_cast<int>(std::ranges::count(rows(), true, &ResourceRow::authorized));
}

void ResourceList::read() {
    const auto& offered = (m_kind == calendars ? m_model.calendars : m_model.reminderLists).get();
    const auto& allowed = (m_kind == calendars ? m_model.allowedCalendarIDs : m_model.allowedReminderListIDs).get();
    std::vector<ResourceRow> wanted;
    for (const auto& each : offered)
        wanted.push_back({shown(each.id), shown(each.title), shown(each.sourceTitle), allowed.contains(each.id)});
    show(wanted);
    emit changed();
}

void ResourceList::setAuthorized(const QString& identifier, bool authorized) {
    m_actions.startAlways(actionName(identifier), [this, id = identifier.toStdString(), authorized] {
        return m_kind == calendars ? m_model.setCalendar(id, authorized) : m_model.setReminderList(id, authorized);
    });
}

void ResourceList::setAll(bool authorized) {
    m_actions.start(actionName({}), [this, authorized] {
        return m_kind == calendars ? m_model.setAllCalendars(authorized) : m_model.setAllReminderLists(authorized);
    });
}

QString ResourceList::actionName(const QString& identifier) const {
    return (m_kind == calendars ? "calendar." : "list.") + identifier;
}

} // namespace bridge
