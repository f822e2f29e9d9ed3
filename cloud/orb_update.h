// Keeps the assistant current.
#pragma once

#include <QObject>
#include <QString>

// GUI thread. The vendor cloud is not asked yet: no newer version is ever
// known, and there is no installer to start.
class ORBUpdate : public QObject
{
    Q_OBJECT

public:
    explicit ORBUpdate(QObject *parent = nullptr);

signals:
    // A newer installer is ready on disk.
    void updateSignal(QString note, bool isForce);
    // Installer download progress, 0 to 1.
    void processStatus(float val);
    // The installer download has ended, successfully or not.
    void downExeFinish();

public:
    // Starts the downloaded installer; false when there is none.
    Q_INVOKABLE bool setup();
    // The assistant's version as it is shown, for example "v1.1.16".
    Q_INVOKABLE QString version();
};
