#include "controller/vr_list_model.h"

#include <algorithm>

VRListModel::VRListModel(QObject *parent) : QAbstractListModel(parent) {}

int VRListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(items_.size());
}

QVariant VRListModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() < 0 || index.row() >= static_cast<int>(items_.size()))
        return {};
    const Item &item = items_[static_cast<size_t>(index.row())];
    switch (role) {
    case StateRole:
        return item.state;
    case NameRole:
        return item.name;
    case AddressRole:
        return item.address;
    case RecentRole:
        return item.recent;
    default:
        return {};
    }
}

QHash<int, QByteArray> VRListModel::roleNames() const
{
    return {{StateRole, "vrState"},
            {NameRole, "vrName"},
            {AddressRole, "ip"},
            {RecentRole, "isRecent"}};
}

void VRListModel::refill(const HeadsetList &headsets, const QStringList &recentSerials)
{
    beginResetModel();
    items_.clear();
    for (const HeadsetRecord &headset : headsets) {
        if (!headset.serial.isEmpty())
            items_.push_back({headset.connected, headset.serial, headset.address,
                              recentSerials.contains(headset.serial)});
    }
    std::reverse(items_.begin(), items_.end());
    endResetModel();
}

bool VRListModel::isReachable(const QString &name) const
{
    return std::any_of(items_.begin(), items_.end(), [&](const Item &item) {
        return item.name == name && !item.address.isEmpty();
    });
}

QString VRListModel::firstName() const
{
    return items_.empty() ? QString() : items_.front().name;
}
