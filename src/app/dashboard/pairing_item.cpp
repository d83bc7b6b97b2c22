#include "app/dashboard/pairing_item.h"

namespace bridge {

namespace {

constexpr const char* pairing = "pair";
constexpr const char* unpairing = "unpair";

} // namespace

PairingItem::PairingItem(BridgeModel& model, Actions& actions, QObject* parent)
    : QObject(parent), m_model(model), m_actions(actions) {
    const auto tell = [this](const auto&) { emit changed(); };
    m_watches.push_back(model.agentServerURL.observe(tell));
    m_watches.push_back(model.isPaired.observe(tell));
    m_watches.push_back(model.pairingInProgress.observe(tell));
    m_watches.push_back(model.pairingStatusMessage.observe(tell));
    connect(&actions, &Actions::changed, this, &PairingItem::changed);
}

bool PairingItem::isInProgress() const {
    return m_model.pairingInProgress.get() || m_actions.isUnderWay(unpairing);
}

void PairingItem::pair(const QString& code) {
    const auto ended = [this] {
        m_hasFailed = !isPaired();
        emit changed();
        if (m_hasFailed)
            emit pairingFailed();
        else
            emit pairingSucceeded();
    };
    m_actions.startUnrepeated(
        pairing, [this, typed = code.toStdString()] { return m_model.pair(typed); }, ended);
}

void PairingItem::unpair() {
    const auto ended = [this] {
        m_hasFailed = isPaired();
        emit changed();
    };
    m_actions.startUnrepeated(
        unpairing, [this] { return m_model.unpair(); }, ended);
}

} // namespace bridge
