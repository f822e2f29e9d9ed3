// Brings Steam and SteamVR up.
#pragma once

#include <QObject>
#include <QString>

class Clock;
class SteamManager;
class SteamWatch;

// GUI thread; waiting for Steam blocks it for up to 27 s.
class SteamStarter : public QObject
{
    Q_OBJECT

public:
    // All outlive the object.
    struct Dependencies
    {
        Clock &clock;
        SteamManager &steam;
        SteamWatch &watch;
    };

    SteamStarter(const Dependencies &dependencies, const QString &applicationDir,
                 QObject *parent = nullptr);

    // Starts Steam, or SteamVR when Steam runs already. Once per run.
    void startUp();
    // What follows it by itself: Steam's state after 1 s, the advice about the
    // install folder after 4 s.
    void scheduleFollowUps();

    // The user asks for Steam or SteamVR.
    void launch(bool steamVR);

signals:
    void toast(const QString &text, int duration);

private:
    void waitForSteam();

    Dependencies deps_;
    QString applicationDir_;
};
