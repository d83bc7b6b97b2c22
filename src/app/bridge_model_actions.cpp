#include "app/bridge_model.h"

#include "base/apple_bridge_error.h"
#include "platform/privacy_service_names.h"

namespace bridge {

namespace {

struct FinallyNot {
    bool& flag;
    ~FinallyNot() { flag = false; }
};

} // namespace

Task<> BridgeModel::act(Task<> action) {
    const auto number = begin();
    Failure failure;
    try {
        co_await std::move(action);
    } catch (const std::exception& error) {
        failure = error.what();
    }
    finish(number, std::move(failure));
    co_await read();
}

Task<> BridgeModel::actInTurn(Task<> action) {
    const auto guard = co_await m_turns.lock();
    co_await std::move(action);
}

Task<> BridgeModel::setCalendar(std::string identifier, bool authorized) {
    return act(actInTurn(dataBridge.setCalendar(std::move(identifier), authorized)));
}

Task<> BridgeModel::setReminderList(std::string identifier, bool authorized) {
    return act(actInTurn(dataBridge.setReminderList(std::move(identifier), authorized)));
}

Task<> BridgeModel::setAllCalendars(bool authorized) {
    return act(actInTurn(dataBridge.setAllCalendars(authorized)));
}

Task<> BridgeModel::setAllReminderLists(bool authorized) {
    return act(actInTurn(dataBridge.setAllReminderLists(authorized)));
}

void BridgeModel::setEnabled(BridgeCapability capability, bool enabled) {
    capabilityPolicy.setEnabled(capability, enabled);
    enabledCapabilities.set(capabilityPolicy.enabledCapabilities());
}

void BridgeModel::setGroupEnabled(BridgeCapabilityGroup group, bool enabled) {
    capabilityPolicy.setGroupEnabled(group, enabled);
    enabledCapabilities.set(capabilityPolicy.enabledCapabilities());
}

std::string BridgeModel::servedBy(BridgeCapabilityGroup group) const {
    return services.get()[static_cast<size_t>(group)];
}

const Published<BridgePermissionState>& BridgeModel::permission(PrivacyService service) const {
    switch (service) {
    case PrivacyService::calendar:
        return calendarPermission;
    case PrivacyService::reminders:
        return remindersPermission;
    case PrivacyService::contacts:
        return contactsPermission;
    case PrivacyService::music:
        return musicPermission;
    case PrivacyService::location:
        break;
    }
    return locationPermission;
}

std::optional<PrivacyService> BridgeModel::permissionOf(BridgeCapabilityGroup group) {
    switch (group) {
    case BridgeCapabilityGroup::calendar:
        return PrivacyService::calendar;
    case BridgeCapabilityGroup::reminders:
        return PrivacyService::reminders;
    case BridgeCapabilityGroup::contacts:
        return PrivacyService::contacts;
    case BridgeCapabilityGroup::music:
        return PrivacyService::music;
    case BridgeCapabilityGroup::locationMaps:
        return PrivacyService::location;
    case BridgeCapabilityGroup::files:
    case BridgeCapabilityGroup::pages:
    case BridgeCapabilityGroup::numbers:
    case BridgeCapabilityGroup::keynote:
        break;
    }
    return std::nullopt;
}

AccessAction BridgeModel::accessAction(PrivacyService service) const {
    switch (permission(service).get()) {
    case BridgePermissionState::notDetermined:
    case BridgePermissionState::writeOnly: // full access was not asked for yet
        return AccessAction::grantAccess;
    case BridgePermissionState::denied:
    case BridgePermissionState::limited:
    case BridgePermissionState::unknown:
        return m_platform.authorization->canAskAgain(service) ? AccessAction::grantAccess : AccessAction::openSettings;
    case BridgePermissionState::restricted: // not by the user, who can't change it
    case BridgePermissionState::fullAccess:
    case BridgePermissionState::unavailable:
        break;
    }
    return AccessAction::none;
}

Task<> BridgeModel::requestAccess(PrivacyService service) {
    return act(askForAccess(service));
}

// Whether only asking again helps.
bool BridgeModel::wasAnswered(PrivacyService service) const {
    const auto state = permissionState(*m_platform.authorization, service);
    return state == BridgePermissionState::denied || state == BridgePermissionState::limited ||
           state == BridgePermissionState::unknown;
}

Task<> BridgeModel::askForAccess(PrivacyService service) {
    auto& authorization = *m_platform.authorization;
    if (authorization.canAskAgain(service) && wasAnswered(service)) {
        const bool granted = co_await authorization.askAgain(service);
        if (!granted) throw AppleBridgeError::permissionDenied(titleOf(service));
    } else if (service == PrivacyService::calendar) {
        co_await dataBridge.requestCalendarAccess();
    } else if (service == PrivacyService::reminders) {
        co_await dataBridge.requestRemindersAccess();
    } else if (service == PrivacyService::location) {
        const auto state = co_await location.requestLocationAccess();
        if (state != BridgePermissionState::fullAccess) throw AppleBridgeError::permissionDenied(titleOf(service));
    } else {
        const bool granted = co_await authorization.requestAccess(service);
        if (!granted) throw AppleBridgeError::permissionDenied(titleOf(service));
    }
}

void BridgeModel::openPrivacySettings() {
    const auto number = begin();
    try {
        m_platform.privacySettings->open();
        finish(number, std::nullopt);
    } catch (const std::exception& error) {
        finish(number, error.what());
    }
}

Task<> BridgeModel::addFolder() {
    return act(chooseFolder());
}

Task<> BridgeModel::chooseFolder() {
    if (m_isChoosingFolder) co_return;
    m_isChoosingFolder = true;
    const FinallyNot finally{m_isChoosingFolder};
    co_await files.chooseFolder();
}

void BridgeModel::removeFolder(std::string id) {
    const auto number = begin();
    Failure failure;
    try {
        files.removeRoot(id);
    } catch (const std::exception& error) {
        failure = error.what();
    }
    readOnlyFolderIDs.set(files.readOnlyRootIDs());
    finish(number, std::move(failure));
}

void BridgeModel::setLaunchAtLogin(bool enabled) {
    const auto number = begin();
    auto& item = *m_platform.loginItem;
    const auto status = item.status();
    try {
        if (!enabled && status != LoginItemStatus::notRegistered) {
            item.unregisterItem();
            finish(number, std::nullopt);
        } else if (enabled && status == LoginItemStatus::requiresApproval) {
            item.openLoginItemsSettings();
            finish(number, std::nullopt);
        } else if (enabled && status != LoginItemStatus::enabled) {
            item.registerItem();
            finish(number, std::nullopt);
        }
    } catch (const std::exception& error) {
        finish(number, "Could not update Launch at Login: " + std::string(error.what()));
    }
    readLaunchAtLogin();
}

} // namespace bridge
