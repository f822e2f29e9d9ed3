// Who is told before something is changed that is not ours alone.
#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

// A document of another program, as it is and as we are about to write it. Never
// twice the same content.
struct OutsideEdit
{
    enum Document { DriverList, ServerSettings };
    Document document = DriverList;
    QString path;
    QByteArray before;
    QByteArray after;
};

// Each is called on the thread that is about to write, before it does; what is
// written then does not depend on it. Empty: nobody is told.
struct OutsideRecord
{
    std::function<void(const OutsideEdit &)> beforeEdit;
    // A file that is no JSON gets another name, so that its own is free.
    std::function<void(const QString &path, const QString &newPath)> beforeSetAside;
};

// Renames the file at `path` to one that ends in ".bad" and is new. False where the
// system refuses that: then it stays.
[[nodiscard]] bool setAside(const QString &path, const OutsideRecord &record);
