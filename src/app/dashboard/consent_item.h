#pragma once

#include "app/dashboard/consent_question.h"

#include <QObject>
#include <QQmlEngine>

namespace bridge {

// The question that is put to the user now.
class ConsentItem : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("of the dashboard")
    // The name of the service; empty when nothing is asked.
    Q_PROPERTY(QString service READ service NOTIFY serviceChanged)

public:
    ConsentItem(ConsentQuestion& questions, QObject* parent);
    ~ConsentItem() override;

    QString service() const;
    Q_INVOKABLE void allow() { m_questions.answer(ConsentQuestion::Answer::allow); }
    Q_INVOKABLE void dontAllow() { m_questions.answer(ConsentQuestion::Answer::dontAllow); }

signals:
    void serviceChanged();

private:
    ConsentQuestion& m_questions;
    Subscription m_watch;
};

} // namespace bridge
