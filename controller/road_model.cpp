#include "controller/road_model.h"

#include "controller/connection_road.h"

namespace {

QString nameOf(int stage)
{
    switch (stage) {
    case ConnectionRoad::Steam:
        return RoadModel::tr("Steam");
    case ConnectionRoad::SteamVR:
        return RoadModel::tr("SteamVR");
    case ConnectionRoad::Server:
        return RoadModel::tr("串流服务");
    case ConnectionRoad::Headset:
        return RoadModel::tr("VR眼镜");
    case ConnectionRoad::Linked:
        return RoadModel::tr("串流连接");
    default:
        return {};
    }
}

} // namespace

RoadModel::RoadModel(const ConnectionRoad &road, QObject *parent)
    : QAbstractListModel(parent), road_(road)
{
    connect(&road, &ConnectionRoad::updated, this, &RoadModel::refresh);
}

int RoadModel::done() const
{
    return road_.firstMissing();
}

QString RoadModel::waitingFor() const
{
    return nameOf(road_.firstMissing());
}

QDateTime RoadModel::waitingSince() const
{
    const int stage = road_.firstMissing();
    return stage < ConnectionRoad::stageCount
               ? road_.since(static_cast<ConnectionRoad::Stage>(stage))
               : QDateTime();
}

int RoadModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ConnectionRoad::stageCount;
}

QVariant RoadModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= ConnectionRoad::stageCount)
        return {};
    const auto stage = static_cast<ConnectionRoad::Stage>(index.row());
    switch (role) {
    case Name:
        return nameOf(stage);
    case Reached:
        return road_.reached(stage);
    case Waiting:
        return stage == road_.firstMissing();
    case Since:
        return road_.since(stage);
    default:
        return {};
    }
}

QHash<int, QByteArray> RoadModel::roleNames() const
{
    return {{Name, "name"}, {Reached, "reached"}, {Waiting, "waiting"}, {Since, "since"}};
}

// One stage may change what another one waits for.
void RoadModel::refresh()
{
    emit dataChanged(index(0), index(ConnectionRoad::stageCount - 1));
    emit changed();
}
