// What may stand in the way of somebody who wants to open a file.
#pragma once

#include <QString>

#include <memory>

// While it lives the file at `path` can be read, but not written.
class ReadOnlyFile
{
public:
    explicit ReadOnlyFile(const QString &path);
    ~ReadOnlyFile();
    Q_DISABLE_COPY(ReadOnlyFile)

    // False where this user may write every file.
    bool works() const;

private:
    QString path_;
};

// While it lives no file can be created in the folder at `path`; the files
// that are in it can be written.
class ClosedFolder
{
public:
    explicit ClosedFolder(const QString &path);
    ~ClosedFolder();
    Q_DISABLE_COPY(ClosedFolder)

    // False where this user may create files everywhere.
    bool works() const;

private:
    QString path_;
};

// While it lives the file at `path` is there, but nobody in this process can
// open it. It may keep other files from being opened as well.
class LockedFile
{
public:
    explicit LockedFile(const QString &path);
    ~LockedFile();
    Q_DISABLE_COPY(LockedFile)

    bool works() const;

private:
    struct Private;
    QString path_;
    std::unique_ptr<Private> d;
};
