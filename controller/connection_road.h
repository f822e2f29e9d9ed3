// The road of a connection, stage by stage, so that a person sees where it
// hangs.
#pragma once

#include <QDateTime>
#include <QObject>
#include <QString>

#include <array>

// GUI thread.
class ConnectionRoad : public QObject
{
    Q_OBJECT

public:
    // In the order in which they are reached.
    enum Stage { Steam, SteamVR, Server, Headset, Linked };
    static constexpr int stageCount = Linked + 1;

    struct State
    {
        bool steam = false;   // Steam runs
        bool steamVR = false; // SteamVR runs
        bool server = false;  // the streaming server is on the control port
        bool headset = false; // it reports at least one headset
        bool linked = false;  // one of them is connected
    };

    explicit ConnectionRoad(QObject *parent = nullptr);

    // What is true at `now`; announces every stage that changed, in the order
    // of the stages.
    void update(const State &state, const QDateTime &now);

    bool reached(Stage stage) const { return stages_[stage].reached; }
    // When the stage got its present state; invalid before the first update.
    QDateTime since(Stage stage) const { return stages_[stage].since; }
    // The first stage that is not reached; stageCount when all are.
    int firstMissing() const;

    // The stage in plain English, for logs.
    static QString describe(Stage stage);

signals:
    void stageChanged(int stage, bool reached);
    // After an update() that changed a stage, or was the first.
    void updated();

private:
    struct Entry
    {
        bool reached = false;
        QDateTime since;
    };
    std::array<Entry, stageCount> stages_;
};
