// Follows one object, whatever its class, as QML can see it.
#pragma once

#include <QHash>
#include <QMetaMethod>
#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>

// Says every signal of the object with its arguments, on the thread that emits
// it, and after each of them which properties have changed since the last one.
// A list model is said row by row, with its roles: one that is a property, and the
// object itself as its property "rows".
class SignalSpy : public QObject
{
public:
    // `name` stands for the object in the lines. It is read on the GUI thread;
    // properties in `unread` never, since reading them has consequences.
    SignalSpy(QObject &object, const QString &name, const QStringList &unread,
              QObject *parent = nullptr);

    // Says what the properties are now, and from then on what happens.
    void begin(std::function<void(const QString &)> say);

    // The property that this thread is reading for a spy; empty when none is.
    static QString reading();

    int qt_metacall(QMetaObject::Call call, int id, void **arguments) override;

private:
    void onSignal(const QMetaMethod &signal, void **arguments);
    void sayChanges();
    void sayIfNew(const QString &called, const QString &text);

    QObject &object_;
    const QString name_;
    const QStringList unread_;
    std::function<void(const QString &)> say_;
    QHash<QString, QString> values_;
};
