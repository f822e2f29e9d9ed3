// A window made of a few lines of QML.
#pragma once

#include <QByteArray>
#include <QQmlEngine>
#include <QQuickWindow>

#include <memory>

class SmallWindow
{
public:
    // Shows the Window of this QML and waits until it is on the screen; its
    // text goes without imports.
    explicit SmallWindow(const QByteArray &qml);
    ~SmallWindow();

    QQuickWindow &window() const { return *window_; }
    // A named object of the window; null if there is none.
    QObject *find(const QString &objectName) const;

private:
    QQmlEngine engine_;
    std::unique_ptr<QQuickWindow> window_;
};
