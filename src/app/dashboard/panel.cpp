#include "app/dashboard/panel.h"

namespace bridge {

namespace {

constexpr const char* refreshing = "refresh";
constexpr const char* opening = "opening"; // does less, so that Refresh may be wanted meanwhile

} // namespace

Panel::Panel(BridgeModel& model, ConsentQuestion& questions)
    : m_model(model),
      m_actions({[&model] { return model.actionsBegun(); }, [&model] { return model.failedAction(); }}),
      m_calendars(model, m_actions, ResourceList::calendars, this),
      m_reminderLists(model, m_actions, ResourceList::reminderLists, this),
      m_folders(model, m_actions, this),
      m_login(model, m_actions, this),
      m_pairing(model, m_actions, this),
      m_consent(questions, this) {
    for (const auto group : allCapabilityGroups)
        m_groups << new GroupItem(model, m_actions, group, this);
    m_watches.push_back(model.lastError.observe([this](const auto&) { emit lastErrorChanged(); }));
    m_watches.push_back(model.httpServer.state.observe([this](const auto&) { emit serverFailureChanged(); }));
    connect(&m_actions, &Actions::changed, this, &Panel::isRefreshingChanged);
}

Panel::~Panel() = default;

QString Panel::serverFailure() const {
    const auto* failure = std::get_if<ServerFailed>(&m_model.httpServer.state.get());
    return failure ? shown(failure->message) : QString();
}

bool Panel::isRefreshing() const {
    return m_actions.isUnderWay(refreshing) || m_actions.isUnderWay(opening);
}

void Panel::refresh() {
    m_actions.startUnrepeated(refreshing, [this] { return m_model.refresh(); });
}

void Panel::refreshOnOpening() {
    m_actions.startUnrepeated(opening, [this] { return m_model.refreshOnOpening(); });
}

void Panel::tryAgain() {
    if (!m_actions.repeatFailed()) refresh();
}

void Panel::openPrivacySettings() {
    m_actions.start("privacySettings", [this] {
        m_model.openPrivacySettings();
        return done();
    });
}

} // namespace bridge
