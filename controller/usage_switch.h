// The user's switch for usage events, for the pages.
#pragma once

#include "base/file_io.h"

#include <QObject>
#include <QString>

#include <functional>

// GUI thread.
class UsageSwitch : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool on READ isOn WRITE setOn NOTIFY changed)

public:
    // The choice is kept in `dataDir`. `forget` drops what was not sent yet: it is
    // called when the user switches off.
    UsageSwitch(const QString &dataDir, std::function<void()> forget, QObject *parent = nullptr);

    bool isOn() const { return on_; }
    // Takes effect at once. What cannot be kept is logged, and holds for this run.
    void setOn(bool on);

signals:
    void changed();
    // What was chosen holds for this run only.
    void notKept(WriteResult result);

private:
    const QString dataDir_;
    const std::function<void()> forget_;
    bool on_;
};
