// What was changed outside the program's own folder, for the page that lists it.
#pragma once

#include "session/outside_change.h"

#include <QAbstractListModel>

class ChangeRecord;

// What is changed now comes first, other tools' drivers before all; then what was
// changed before. Looked at anew by refresh() only. GUI thread.
//
// Roles: "what" (translated), "detail" (drivers, forwards or the file), "since" (text,
// in the user's time), "inForce" (changed now), "returnable" (giveBack() may be asked
// for).
class ChangesModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    // Whether anything can be given back.
    Q_PROPERTY(bool returnable READ isReturnable NOTIFY countChanged)

public:
    enum Role { What = Qt::UserRole, Detail, Since, InForce, Returnable };

    // `record` outlives this object.
    explicit ChangesModel(ChangeRecord &record, QObject *parent = nullptr);

    int count() const { return rows_.size(); }
    bool isReturnable() const;
    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    Q_INVOKABLE void refresh();
    // Of this row, or of all. False when something could not be given back now.
    Q_INVOKABLE bool giveBack(int row);
    Q_INVOKABLE bool giveBackAll();

signals:
    void countChanged();

private:
    struct Row
    {
        OutsideChange change;
        QStringList drivers;
        bool inForce;
        bool returnable;
    };

    ChangeRecord &record_;
    QList<Row> rows_;
};
