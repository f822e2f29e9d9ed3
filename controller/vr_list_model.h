// The list of headsets that the user chooses from.
#pragma once

#include "link/headset_record.h"

#include <QAbstractListModel>
#include <QStringList>

#include <vector>

// GUI thread. QML knows it by this name too, for the numbers of its roles.
class VRListModel : public QAbstractListModel
{
    Q_OBJECT

public:
    enum Role {
        StateRole = Qt::UserRole, // "vrState": connected to this PC
        NameRole,                 // "vrName": the serial
        AddressRole,              // "ip"
        RecentRole                // "isRecent": connected before
    };
    Q_ENUM(Role)

    explicit VRListModel(QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    // Replaces the whole list. Headsets without a serial are left out; the
    // last reported one comes first.
    void refill(const HeadsetList &headsets, const QStringList &recentSerials);

    // Whether it is listed with an address.
    bool isReachable(const QString &name) const;
    // The name in the first row; empty when there is none.
    QString firstName() const;

private:
    struct Item
    {
        bool state;
        QString name;
        QString address;
        bool recent;
    };

    std::vector<Item> items_;
};

Q_DECLARE_METATYPE(VRListModel *)
