// How far a connection has come, stage by stage, so that a person sees where it
// hangs.
#pragma once

#include "checks/stage.h"

#include <QDateTime>
#include <QObject>
#include <QString>

#include <array>

// GUI thread.
class ConnectionStages : public QObject
{
    Q_OBJECT

public:
    // Which of the stages are reached.
    struct Reached
    {
        bool steam = false;
        bool steamVR = false;
        bool server = false;
        bool headset = false;
        bool linked = false;
    };

    explicit ConnectionStages(QObject *parent = nullptr);

    // What is true at `now`; announces every stage that changed, in the order
    // of the stages.
    void update(const Reached &reached, const QDateTime &now);

    bool reached(Stage stage) const { return at(stage).reached; }
    // When the stage got its present state; invalid before the first update.
    QDateTime since(Stage stage) const { return at(stage).since; }
    // The first stage that is not reached, as a number; stageCount when all are.
    int firstMissing() const;

    // The stage in plain English, for logs.
    static QString describe(Stage stage);

signals:
    // `stage` is the number of a Stage.
    void stageChanged(int stage, bool reached);
    // After an update() that changed a stage, or was the first.
    void updated();

private:
    struct Entry
    {
        bool reached = false;
        QDateTime since;
    };
    const Entry &at(Stage stage) const { return entries_[static_cast<size_t>(stage)]; }

    std::array<Entry, stageCount> entries_;
};
