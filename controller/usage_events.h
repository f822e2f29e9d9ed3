// The usage events that the controller reports, and what goes with them.
#pragma once

#include "config/link_kind.h"

#include <QJsonObject>
#include <QString>

#include <functional>

// GUI thread.
class UsageEvents
{
public:
    using Report = std::function<void(const QString &eventId, const QJsonObject &extraData)>;

    // The settings of the moment at which the program started: the events of
    // one run speak of these, whatever is changed later.
    struct StartSettings
    {
        bool highFrameRate = false;
        bool audio = false;
        int definitionIndex = 0;
    };

    explicit UsageEvents(Report report) : report_(std::move(report)) {}

    void setStartSettings(const StartSettings &settings) { start_ = settings; }

    void programStarted() const;
    // The user chose a mode for the first time, or left `link` for the other.
    void streamMode(LinkKind link, bool isSwitch) const;
    // The page of the mode was looked at, with or without a PC that can stream.
    void modeViewed(LinkKind link, bool isAvailable) const;
    void steamAppEnded(int seconds, const QString &appName, LinkKind link) const;
    void programClosed(qint64 seconds) const;

private:
    void report(const char *eventId, const QJsonObject &extraData = {}) const;

    Report report_;
    StartSettings start_;
};
