// The stages of the connection as a list that a page can show.
#pragma once

#include <QAbstractListModel>
#include <QDateTime>

class ConnectionStages;

// One row a stage, in the order in which they are reached. The rows never come
// or go. GUI thread.
//
// Roles: "name" (text, translated), "reached" (bool), "waiting" (bool: the
// first stage that is not reached, so where it hangs), "since" (date and time
// at which the stage got its state; invalid before anybody looked).
class StageModel : public QAbstractListModel
{
    Q_OBJECT
    // How many stages are reached without a gap; all of them when connected.
    Q_PROPERTY(int done READ done NOTIFY changed)
    // The stage that is waited for; empty when all are reached.
    Q_PROPERTY(QString waitingFor READ waitingFor NOTIFY changed)
    // Since when; invalid when there is nothing to wait for or nobody looked.
    Q_PROPERTY(QDateTime waitingSince READ waitingSince NOTIFY changed)

public:
    enum Role { Name = Qt::UserRole, Reached, Waiting, Since };
    Q_ENUM(Role)

    // `stages` outlives the model.
    explicit StageModel(const ConnectionStages &stages, QObject *parent = nullptr);

    int done() const;
    QString waitingFor() const;
    QDateTime waitingSince() const;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

signals:
    void changed();

private:
    void refresh();

    const ConnectionStages &stages_;
};
