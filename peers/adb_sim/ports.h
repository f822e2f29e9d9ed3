// The ports between this PC and the headsets, as adb's server keeps them.
#pragma once

#include "peers/adb_sim/state.h"

#include <QObject>
#include <QString>

#include <memory>
#include <vector>

class QTcpServer;

// A forward really holds its port; whoever connects there meets the headset,
// which says "HEADSET" and a line feed and then keeps quiet. Both lists lose
// what belongs to a device that is gone, connections included.
class Ports : public QObject
{
    Q_OBJECT

public:
    explicit Ports(const State &state, QObject *parent = nullptr);
    ~Ports() override;

    // Empty, or why not.
    QString forward(const QString &serial, const QString &local, const QString &remote);
    QString removeForward(const QString &local);
    void removeForwards();
    void reverse(const QString &serial, const QString &remote, const QString &local);
    void removeReverses(const QString &serial);

    // As adb prints them.
    QString forwards() const;
    QString reverses(const QString &serial) const;

    // Drops what belongs to no device any more.
    void settle();

private:
    struct Forward
    {
        QString serial;
        QString local;
        QString remote;
        std::unique_ptr<QTcpServer> listener;
    };
    struct Reverse
    {
        QString serial;
        QString remote;
        QString local;
    };

    const State &state_;
    std::vector<Forward> forwards_;
    std::vector<Reverse> reverses_;
};
