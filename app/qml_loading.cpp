#include "app/qml_loading.h"

#include <QCoreApplication>
#include <QQmlApplicationEngine>
#include <QUrl>

void loadWindow(QQmlApplicationEngine &engine, const QUrl &url)
{
    // Queued: exit() has no effect before the event loop runs.
    QObject::connect(
        &engine, &QQmlApplicationEngine::objectCreated, QCoreApplication::instance(),
        [url](const QObject *object, const QUrl &objectUrl) {
            if (!object && objectUrl == url)
                QCoreApplication::exit(-1);
        },
        Qt::QueuedConnection);
    engine.load(url);
}
