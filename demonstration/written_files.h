// Which files are written in some folders, in the order in which it happens.
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

// The system keeps the order until somebody asks for it. One thread at a time.
class WrittenFiles
{
public:
    WrittenFiles();
    ~WrittenFiles();

    WrittenFiles(const WrittenFiles &) = delete;
    WrittenFiles &operator=(const WrittenFiles &) = delete;

    // The files of this folder, not those of folders in it.
    void watch(const QString &folder);

    // What was made, written, replaced or removed since the last call: a line for
    // each time, and for text one for each line of it that is new ("+") or gone
    // ("-"). Two writes between two calls are told apart, their texts are not.
    QStringList news();

private:
    QStringList changes(const QString &path);

    int notifier_;
    QHash<int, QString> folders_;
    QHash<QString, QStringList> known_; // the lines of each file
};
