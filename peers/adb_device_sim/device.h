// The headset, as adb's server meets it on a TCP port.
#pragma once

#include "peers/adb_device_sim/transport.h"

#include <QTcpServer>

#include <memory>

// Has one connection at a time; a new one takes the place of the old.
class Device : public QObject
{
    Q_OBJECT

public:
    explicit Device(Transport::Tell tell);

    // Port 0 chooses one. Empty, or why not.
    QString listen(quint16 port);
    quint16 port() const { return listener_.serverPort(); }

private:
    const Transport::Tell tell_;
    QTcpServer listener_;
    std::unique_ptr<Transport> transport_;
};
