#include "app/session_guard.h"

#include "pc/session_end.h"

#include <QCoreApplication>
#include <QDebug>
#include <QMetaObject>

#include <utility>

SessionGuard::SessionGuard(std::function<void()> store, std::function<void()> end)
    : store_(std::move(store)), end_(std::move(end))
{
    QCoreApplication::instance()->installNativeEventFilter(this);
}

SessionGuard::~SessionGuard() = default;

bool SessionGuard::nativeEventFilter(const QByteArray &eventType, void *message, long *result)
{
    using session_end::Message;
    switch (session_end::read(eventType, message)) {
    case Message::Other:
        return false;
    case Message::Question:
        *result = session_end::yes;
        return true;
    case Message::IsRefused:
        *result = 0;
        return true;
    case Message::Ends:
        break;
    }
    *result = 0;
    if (!std::exchange(over_, true)) {
        qInfo("the session ends");
        store_();
        QMetaObject::invokeMethod(QCoreApplication::instance(), end_, Qt::QueuedConnection);
    }
    return true;
}
