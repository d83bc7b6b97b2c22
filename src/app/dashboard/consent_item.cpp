#include "app/dashboard/consent_item.h"

#include "app/dashboard/text.h"
#include "platform/privacy_service_names.h"

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
    return current ? shown(nameOf(*current)) : QString();
}

} // namespace bridge
