#include "controller/connection_stages.h"

ConnectionStages::ConnectionStages(QObject *parent) : QObject(parent) {}

void ConnectionStages::update(const Reached &reached, const QDateTime &now)
{
    const std::array<bool, stageCount> values = {reached.steam, reached.steamVR, reached.server,
                                                 reached.headset, reached.linked};
    bool news = false;
    for (int stage = 0; stage < stageCount; ++stage) {
        Entry &entry = entries_[stage];
        const bool changed = entry.reached != values[stage];
        if (changed || !entry.since.isValid()) {
            entry = {values[stage], now};
            news = true;
        }
        if (changed)
            emit stageChanged(stage, entry.reached);
    }
    if (news)
        emit updated();
}

int ConnectionStages::firstMissing() const
{
    int stage = 0;
    while (stage < stageCount && entries_[stage].reached)
        ++stage;
    return stage;
}

QString ConnectionStages::describe(Stage stage)
{
    switch (stage) {
    case Stage::Steam:
        return QStringLiteral("Steam runs");
    case Stage::SteamVR:
        return QStringLiteral("SteamVR runs");
    case Stage::Server:
        return QStringLiteral("streaming server on the control port");
    case Stage::Headset:
        return QStringLiteral("headset found");
    case Stage::Linked:
        return QStringLiteral("headset connected");
    }
    return {};
}
