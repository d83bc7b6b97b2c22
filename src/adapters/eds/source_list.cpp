#include "adapters/eds/source_list.h"

#include "adapters/eds/default_source.h"
#include "adapters/eds/eds_names.h"
#include "adapters/eds/source_kind.h"
#include "adapters/eds/source_tree.h"

#include <algorithm>
#include <tuple>

namespace bridge {

namespace {

class Lister {
public:
    explicit Lister(const std::vector<RegisteredSource>& sources) : m_sources(sources) {}

    SourceList list() {
        addOpenAccounts();
        addCalendars(EntityType::event);
        addCalendars(EntityType::reminder);
        std::sort(m_list.accounts.begin(), m_list.accounts.end(), isBefore<CalendarSource>);
        m_list.defaultCalendar = defaultSource(EntityType::event, m_list);
        m_list.defaultTaskList = defaultSource(EntityType::reminder, m_list);
        return std::move(m_list);
    }

private:
    template <typename T> static bool isBefore(const T& left, const T& right) {
        return std::tie(left.title, left.id) < std::tie(right.title, right.id);
    }

    static CalendarSource describe(const RegisteredSource& account, const std::string& calendarBackend) {
        const bool isCollection = account.data.has(collectionExtension);
        const auto backend = isCollection ? account.data.backend(collectionExtension) : calendarBackend;
        return {account.identifier, account.data.displayName(), sourceTypeOf(backend)};
    }

    void addAccount(const CalendarSource& account) {
        const auto isThis = [&](const CalendarSource& other) { return other.id == account.id; };
        if (std::none_of(m_list.accounts.begin(), m_list.accounts.end(), isThis)) m_list.accounts.push_back(account);
    }

    // Those without a calendar too, as far as they take new ones.
    void addOpenAccounts() {
        for (const auto& [identifier, source] : m_sources)
            if (identifier == localAccount || (source->takesNewOnes && m_sources.isEnabled(*source)))
                addAccount(describe(*source, "local"));
    }

    void addCalendars(EntityType type) {
        const size_t start = m_list.calendars.size();
        for (const auto& [identifier, source] : m_sources) {
            // One that holds both kinds is shown as what it was listed as first.
            if (!source->data.has(extensionOf(type)) || !m_sources.isEnabled(*source) || m_list.find(identifier))
                continue;
            // The account of a calendar without one is the calendar itself.
            const auto* account = m_sources.find(source->data.parent());
            const auto described = describe(account ? *account : *source, source->data.backend(extensionOf(type)));
            addAccount(described);
            m_list.calendars.push_back({identifier, type, source->data.displayName(), described, false});
        }
        std::sort(m_list.calendars.begin() + static_cast<std::ptrdiff_t>(start), m_list.calendars.end(),
                  isBefore<Calendar>);
    }

    SourceTree m_sources;
    SourceList m_list;
};

} // namespace

const Calendar* SourceList::find(const std::string& identifier) const {
    const auto isThis = [&](const Calendar& calendar) { return calendar.id == identifier; };
    const auto found = std::find_if(calendars.begin(), calendars.end(), isThis);
    return found == calendars.end() ? nullptr : &*found;
}

SourceList listed(const std::vector<RegisteredSource>& sources) {
    return Lister(sources).list();
}

std::string subjectOf(const Calendar& calendar) {
    return (calendar.entityType == EntityType::event ? "The calendar “" : "The list “") + calendar.title + "”";
}

} // namespace bridge
