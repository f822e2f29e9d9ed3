// What the checks have found, for the pages.
#pragma once

#include "checks/assessment.h"

#include <QAbstractListModel>

// A list of findings. One that stays from one time to the next keeps its row,
// so that what shows it stays as well. GUI thread.
//
// Roles: "identifier" (text), "severity" (checks::Severity), "title", "text"
// (translated), "evidence" (list of objects of "label", translated, and "value"), "action"
// (checks::Action::Kind), "actionLabel" (translated; empty without an action),
// "blocks" (the stage's number, below 0 for none), "surface" (checks::Surface).
class FindingList : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum Role {
        Identifier = Qt::UserRole,
        SeverityRole,
        Title,
        Text,
        EvidenceRole,
        ActionRole,
        ActionLabel,
        Blocks,
        SurfaceRole
    };

    using QAbstractListModel::QAbstractListModel;

    // Findings of one table, no two of the same row.
    void show(const std::vector<checks::Finding> &findings);

    int count() const { return static_cast<int>(findings_.size()); }
    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    // The user asks for the action of a row.
    Q_INVOKABLE void act(int row);

signals:
    void countChanged();
    void acted(const checks::Action &action);

private:
    void drop(const std::vector<checks::Finding> &findings);

    std::vector<checks::Finding> findings_;
};

// All findings that hold, the most likely cause first, and which of them the
// window shows where.
class CheckModel : public FindingList
{
    Q_OBJECT
    // Of those that have no surface of their own: the first, for the headset
    // card, and the others, for the details.
    Q_PROPERTY(QAbstractItemModel *foremost READ foremost CONSTANT)
    Q_PROPERTY(QAbstractItemModel *others READ others CONSTANT)
    // The PC was asked something and has not answered yet.
    Q_PROPERTY(bool asking READ isAsking NOTIFY askingChanged)

public:
    explicit CheckModel(QObject *parent = nullptr);

    void showAll(const std::vector<checks::Finding> &findings);
    void setAsking(bool asking);

    FindingList *foremost() { return &foremost_; }
    FindingList *others() { return &others_; }
    bool isAsking() const { return asking_; }

signals:
    void askingChanged();
    // A dialog is to be opened, "SystemInfoPage" for example.
    void pageWanted(const QString &page);

private:
    FindingList foremost_;
    FindingList others_;
    bool asking_ = false;
};

// Lets pages say Checks.Error and the like: the enums of the namespace checks, in the
// module ORBManager 1.0. Once, before the first page is loaded.
void registerCheckTypes();
