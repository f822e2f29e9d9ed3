// Everything of a first copy, put together.
#pragma once

class ChangesModel;
class ConnectionStages;
class ORBManager;
class ORBUpdate;
class QGuiApplication;
class QLocale;
class QQmlApplicationEngine;
class StageModel;
class UsageSwitch;

// Makes the controller and the update checker, children of the application, and ends
// them before it. GUI thread.
class Composition
{
public:
    Composition(const QLocale &locale, QGuiApplication *app);
    // Ends the controller, which closes SteamVR and stores what there is to store.
    ~Composition();

    Composition(const Composition &) = delete;
    Composition &operator=(const Composition &) = delete;

    // Lets the pages see them.
    void publish(QQmlApplicationEngine &engine) const;

    // The window is there: what takes time from whoever draws may begin.
    void windowIsThere() const;

    // Tells the user that the last run broke.
    void tellOfCrash() const;

    // The user's session ends, and with it this process: stores what has to be kept.
    void endSession() const;

    const ConnectionStages &stages() const;

private:
    UsageSwitch *usage_; // lives as long as the controller
    ORBManager *orb_;
    ORBUpdate *update_;
    ChangesModel *changes_;  // owned by the controller
    StageModel *stageModel_; // owned by the controller
};

// Makes the compiled-in pages, images and fonts available.
void initProgramResources();
