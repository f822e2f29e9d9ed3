// A script that comes through a descriptor, as the standard input does.
#pragma once

#include <QByteArray>
#include <QObject>

class QSocketNotifier;

// Reads as soon as there is something, until the other side is done or this
// object goes, which has to be before the event loop does. The descriptor stays
// the caller's. GUI thread.
class ScriptInput : public QObject
{
    Q_OBJECT

public:
    explicit ScriptInput(int descriptor, QObject *parent = nullptr);

signals:
    void arrived(const QByteArray &bytes);

private:
    void readOn();

    const int descriptor_;
    QSocketNotifier *notifier_;
};
