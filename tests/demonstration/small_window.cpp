#include "tests/demonstration/small_window.h"

#include <QQmlComponent>
#include <QTest>

SmallWindow::SmallWindow(const QByteArray &qml)
{
    QQmlComponent component(&engine_);
    component.setData("import QtQuick 2.15\nimport QtQuick.Window 2.15\n" + qml, {});
    window_.reset(qobject_cast<QQuickWindow *>(component.create()));
    if (!window_)
        qFatal("this is no window: %s", qPrintable(component.errorString()));
    window_->show();
    QTRY_VERIFY(window_->isExposed());
}

SmallWindow::~SmallWindow() = default;

QObject *SmallWindow::find(const QString &objectName) const
{
    return window_->findChild<QObject *>(objectName);
}
