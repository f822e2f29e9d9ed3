#include "controller/stage_model.h"

#include "controller/connection_stages.h"

namespace {

QString nameOf(Stage stage)
{
    switch (stage) {
    case Stage::Steam:
        return StageModel::tr("Steam");
    case Stage::SteamVR:
        return StageModel::tr("SteamVR");
    case Stage::Server:
        return StageModel::tr("串流服务");
    case Stage::Headset:
        return StageModel::tr("VR眼镜");
    case Stage::Linked:
        return StageModel::tr("串流连接");
    }
    return {};
}

} // namespace

StageModel::StageModel(const ConnectionStages &stages, QObject *parent)
    : QAbstractListModel(parent), stages_(stages)
{
    connect(&stages, &ConnectionStages::updated, this, &StageModel::refresh);
}

int StageModel::done() const
{
    return stages_.firstMissing();
}

QString StageModel::waitingFor() const
{
    const int stage = stages_.firstMissing();
    return stage < stageCount ? nameOf(static_cast<Stage>(stage)) : QString();
}

QDateTime StageModel::waitingSince() const
{
    const int stage = stages_.firstMissing();
    return stage < stageCount ? stages_.since(static_cast<Stage>(stage)) : QDateTime();
}

int StageModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : stageCount;
}

QVariant StageModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= stageCount)
        return {};
    const auto stage = static_cast<Stage>(index.row());
    switch (role) {
    case Name:
        return nameOf(stage);
    case Reached:
        return stages_.reached(stage);
    case Waiting:
        return index.row() == stages_.firstMissing();
    case Since:
        return stages_.since(stage);
    default:
        return {};
    }
}

QHash<int, QByteArray> StageModel::roleNames() const
{
    return {{Name, "name"}, {Reached, "reached"}, {Waiting, "waiting"}, {Since, "since"}};
}

// One stage may change what another one waits for.
void StageModel::refresh()
{
    emit dataChanged(index(0), index(stageCount - 1));
    emit changed();
}
