#include "controller/changes_model.h"

#include "session/change_record.h"
#include "session/give_back.h"

#include <QCoreApplication>
#include <QDir>
#include <QLocale>

#include <algorithm>

namespace {

const char *title(OutsideChange::Kind kind, bool hasDrivers)
{
    switch (kind) {
    case OutsideChange::DriverList:
        break;
    case OutsideChange::ServerSettings:
        return QT_TRANSLATE_NOOP("ChangesModel", "串流服务的设置");
    case OutsideChange::SetAside:
        return QT_TRANSLATE_NOOP("ChangesModel", "无法读取而被重命名的文件");
    case OutsideChange::Forwards:
        return QT_TRANSLATE_NOOP("ChangesModel", "其他程序的adb端口转发");
    }
    return hasDrivers ? QT_TRANSLATE_NOOP("ChangesModel", "其他程序的SteamVR驱动")
                      : QT_TRANSLATE_NOOP("ChangesModel", "SteamVR的驱动列表");
}

QString native(const QString &path)
{
    return QDir::toNativeSeparators(path);
}

} // namespace

ChangesModel::ChangesModel(ChangeRecord &record, QObject *parent)
    : QAbstractListModel(parent), record_(record)
{
}

bool ChangesModel::isReturnable() const
{
    return std::any_of(rows_.begin(), rows_.end(), [](const Row &row) { return row.returnable; });
}

int ChangesModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant ChangesModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Row &row = rows_[index.row()];
    const OutsideChange &change = row.change;
    switch (role) {
    case What:
        return QCoreApplication::translate("ChangesModel",
                                           title(change.kind, !row.drivers.isEmpty()));
    case Detail:
        if (change.kind == OutsideChange::Forwards)
            return change.forwards.join('\n');
        if (!row.drivers.isEmpty())
            return native(row.drivers.join('\n'));
        return native(change.newPath.isEmpty() ? change.path : change.newPath);
    case Since:
        return QLocale().toString(change.time.toLocalTime(), QLocale::ShortFormat);
    case InForce:
        return row.inForce;
    case Returnable:
        return row.returnable;
    default:
        return {};
    }
}

QHash<int, QByteArray> ChangesModel::roleNames() const
{
    return {{What, "what"},
            {Detail, "detail"},
            {Since, "since"},
            {InForce, "inForce"},
            {Returnable, "returnable"}};
}

void ChangesModel::refresh()
{
    beginResetModel();
    rows_.clear();
    const QList<OutsideChange> changes = record_.changes();
    for (const OutsideChange &change : changes) {
        const bool inForce = give_back::isInForce(change, record_.ownDriver());
        rows_.prepend({change, outside_change::foreignDrivers(change.before, record_.ownDriver()),
                       inForce, inForce && give_back::isPossible(change)});
    }
    const auto rank = [](const Row &row) {
        const bool isDriver =
            row.change.kind == OutsideChange::DriverList && !row.drivers.isEmpty();
        return (row.inForce ? 0 : 2) + (isDriver ? 0 : 1);
    };
    std::stable_sort(rows_.begin(), rows_.end(),
                     [&](const Row &a, const Row &b) { return rank(a) < rank(b); });
    endResetModel();
    emit countChanged();
}

bool ChangesModel::giveBack(int row)
{
    if (row < 0 || row >= count())
        return false;
    const bool isDone = record_.giveBack(rows_[row].change.id);
    refresh();
    return isDone;
}

bool ChangesModel::giveBackAll()
{
    const bool isDone = record_.giveBackAll();
    refresh();
    return isDone;
}
