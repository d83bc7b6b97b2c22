#include "app/dashboard/consent_item.h"

namespace bridge {

ConsentItem::ConsentItem(ConsentQuestion& questions, QObject* parent)
    : QObject(parent),
      m_questions(questions),
      m_watch(questions.current.observe([this](const auto&) { emit serviceChanged(); })) {
    m_questions.attachDashboard();
}

ConsentItem::~ConsentItem() {
    m_watch.reset();
    m_questions.detachDashboard();
}

QString ConsentItem::service() const {
    const auto current = m_questions.current.get();
    if (!current) return {};
    switch (*current) {
    case PrivacyService::calendar:
        return "calendar";
    case PrivacyService::reminders:
        return "reminders";
    case PrivacyService::contacts:
        return "contacts";
    case PrivacyService::music:
        return "music";
    case PrivacyService::location:
        return "location";
    }
    return {};
}

} // namespace bridge
