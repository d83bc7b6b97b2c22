#include "bridges/calendar/containers.h"

#include "base/text.h"
#include "bridges/calendar/descriptions.h"
#include "bridges/calendar/item_title.h"
#include "bridges/calendar/sorting.h"
#include "bridges/calendar/writable_sources.h"
#include "bridges/common/permission_state.h"
#include "platform/privacy_service_names.h"

namespace bridge {

namespace {

std::vector<AppleListDescriptor> describeSorted(const std::vector<Calendar>& calendars) {
    std::vector<AppleListDescriptor> described;
    described.reserve(calendars.size());
    for (const auto& calendar : calendars)
        described.push_back(describe(calendar));
    return sortedBy(std::move(described), [](const AppleListDescriptor& each) {
        return std::pair(sortKey(each.sourceTitle), sortKey(each.title));
    });
}

} // namespace

void Containers::requireFullAccess() const {
    if (permissionState(m_authorization, m_kind.service) != BridgePermissionState::fullAccess)
        throw AppleBridgeError::permissionDenied(titleOf(m_kind.service));
}

Task<> Containers::requestAccess() {
    const bool granted = co_await m_authorization.requestAccess(m_kind.service);
    if (!granted) throw AppleBridgeError::permissionDenied(titleOf(m_kind.service));
}

bool Containers::isAllowed(const std::string& identifier) const {
    return bridge::isAllowed(identifier, m_policy.identifiers(m_kind.entityType));
}

void Containers::requireAllowed(const std::string& identifier) const {
    if (!isAllowed(identifier)) throw AppleBridgeError::resourceAccessDenied(m_kind.containerNotAuthorized);
}

Task<std::vector<AppleListDescriptor>> Containers::list() {
    requireFullAccess();
    const auto calendars = co_await m_store.calendars(m_kind.entityType);
    co_return describeSorted(calendars);
}

Task<std::vector<AppleListDescriptor>> Containers::authorized() {
    auto all = co_await list();
    std::erase_if(all, [this](const AppleListDescriptor& each) { return !isAllowed(each.id); });
    co_return all;
}

Task<BridgeResourceAccessSnapshot> Containers::resources() {
    BridgeResourceAccessSnapshot counted;
    try {
        requireFullAccess();
        const auto calendars = co_await m_store.calendars(m_kind.entityType);
        for (const auto& calendar : calendars)
            if (isAllowed(calendar.id)) ++counted.allowed;
        counted.available = static_cast<int64_t>(calendars.size());
    } catch (const AppleBridgeError&) {
    } catch (const PlatformError&) {
    }
    co_return counted;
}

Task<> Containers::setAuthorized(std::string identifier, bool authorized) {
    requireFullAccess();
    const auto calendars = co_await m_store.calendars(m_kind.entityType);
    if (std::ranges::find(calendars, identifier, &Calendar::id) == calendars.end()) throw m_kind.notFound(identifier);
    m_policy.setAllowed(m_kind.entityType, identifier, authorized);
}

Task<> Containers::setAllAuthorized(bool authorized) {
    requireFullAccess();
    AppleResourceAccessPolicy::Identifiers identifiers;
    if (authorized) {
        const auto calendars = co_await m_store.calendars(m_kind.entityType);
        for (const auto& calendar : calendars)
            identifiers.insert(calendar.id);
    }
    m_policy.replace(m_kind.entityType, std::move(identifiers));
}

Task<std::vector<AppleSourceDescriptor>> Containers::sources() {
    requireFullAccess();
    const auto defaultCalendar = co_await m_store.defaultCalendar(m_kind.entityType);
    const auto calendars = co_await m_store.calendars(m_kind.entityType);
    const auto sources = co_await m_store.sources();
    std::vector<AppleSourceDescriptor> described;
    for (const auto& source : writableSources(sources, calendars, defaultCalendar))
        described.push_back(describe(source));
    co_return described;
}

Task<AppleListDescriptor> Containers::create(CreateAppleListRequest request) {
    requireFullAccess();
    const auto title = validTitle(request.title, m_kind.label);
    const auto defaultCalendar = co_await m_store.defaultCalendar(m_kind.entityType);
    const auto calendars = co_await m_store.calendars(m_kind.entityType);
    const auto sources = co_await m_store.sources();
    const auto source =
        sourceForNewCalendar(writableSources(sources, calendars, defaultCalendar), request.sourceID, defaultCalendar);
    const auto created = co_await m_store.addCalendar(m_kind.entityType, source.id, title);
    m_policy.setAllowed(m_kind.entityType, created.id, true);
    co_return describe(created);
}

Task<AppleListDescriptor> Containers::rename(UpdateAppleListRequest request) {
    requireFullAccess();
    const auto guard = co_await m_changing.lock(request.identifier);
    const auto present = co_await existing(request.identifier);
    const auto title = validTitle(request.title, m_kind.label);
    const auto renamed = co_await m_store.renameCalendar(present.id, title);
    co_return describe(renamed);
}

Task<> Containers::remove(std::string identifier) {
    requireFullAccess();
    const auto guard = co_await m_changing.lock(identifier);
    const auto present = co_await existing(identifier);
    co_await m_store.removeCalendar(present.id);
    m_policy.setAllowed(m_kind.entityType, present.id, false);
}

// Calendars are looked for among everything in the store, lists only among lists: so a list that is taken for a
// calendar is refused, not unknown.
Task<Calendar> Containers::existing(std::string identifier) {
    auto found = co_await m_store.calendar(identifier);
    const bool isOfKind = found && found->entityType == m_kind.entityType;
    if (!found || (!isOfKind && m_kind.entityType == EntityType::reminder)) throw m_kind.notFound(identifier);
    requireAllowed(identifier);
    if (!isOfKind) throw m_kind.notFound(identifier);
    co_return std::move(*found);
}

Task<std::vector<Calendar>> Containers::forSearch(std::vector<std::string> identifiers) {
    const auto wanted =
        resolveRequestedIDs(identifiers, m_policy.identifiers(m_kind.entityType), m_kind.noneAuthorized);
    auto found = co_await m_store.calendars(m_kind.entityType);
    std::erase_if(found, [&](const Calendar& calendar) { return !wanted.contains(calendar.id); });
    if (identifiers.empty() && found.empty()) throw AppleBridgeError::resourceAccessDenied(m_kind.noneAvailable);
    for (const auto& identifier : identifiers)
        if (std::ranges::find(found, identifier, &Calendar::id) == found.end()) throw m_kind.notFound(identifier);
    co_return found;
}

Task<Calendar> Containers::forNewItem(std::optional<std::string> identifier) {
    if (identifier) {
        auto named = co_await target(std::move(*identifier));
        co_return named;
    }
    auto usual = co_await m_store.defaultCalendar(m_kind.entityType);
    if (usual && isAllowed(usual->id)) co_return std::move(*usual);

    const std::vector<std::string> anyAuthorized;
    auto found = co_await forSearch(anyAuthorized);
    std::erase_if(found, [](const Calendar& calendar) { return !calendar.allowsContentModifications; });
    if (found.size() != 1) throw AppleBridgeError::malformedRequest(m_kind.ambiguous);
    co_return std::move(found.front());
}

Task<Calendar> Containers::target(std::string identifier) {
    if (!isAllowed(identifier)) throw AppleBridgeError::resourceAccessDenied(m_kind.targetNotAuthorized);
    auto found = co_await m_store.calendar(identifier);
    if (!found || found->entityType != m_kind.entityType) throw m_kind.notFound(identifier);
    co_return std::move(*found);
}

Task<std::string> Containers::title(std::string identifier) {
    auto found = co_await m_store.calendar(std::move(identifier));
    if (!found) co_return "";
    co_return std::move(found->title);
}

} // namespace bridge
