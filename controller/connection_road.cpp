#include "controller/connection_road.h"

ConnectionRoad::ConnectionRoad(QObject *parent) : QObject(parent) {}

void ConnectionRoad::update(const State &state, const QDateTime &now)
{
    const std::array<bool, stageCount> values = {state.steam, state.steamVR, state.server,
                                                 state.headset, state.linked};
    bool news = false;
    for (int stage = 0; stage < stageCount; ++stage) {
        Entry &entry = stages_[stage];
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

int ConnectionRoad::firstMissing() const
{
    int stage = 0;
    while (stage < stageCount && stages_[stage].reached)
        ++stage;
    return stage;
}

QString ConnectionRoad::describe(Stage stage)
{
    switch (stage) {
    case Steam:
        return QStringLiteral("Steam runs");
    case SteamVR:
        return QStringLiteral("SteamVR runs");
    case Server:
        return QStringLiteral("streaming server on the control port");
    case Headset:
        return QStringLiteral("headset found");
    case Linked:
        return QStringLiteral("headset connected");
    }
    return {};
}
