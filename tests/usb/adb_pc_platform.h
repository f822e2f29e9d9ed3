// What AdbPc needs that differs between the systems.
#pragma once

#include <QString>

#include <memory>

class AdbPcPlatform
{
public:
    explicit AdbPcPlatform(quint16 adbPort);
    ~AdbPcPlatform();

    void setSearchPath(const QString &folder);
    // Lets "adb" be found where a program adb.exe lies.
    static void letFind(const QString &program);

private:
    struct Private;
    std::unique_ptr<Private> d;
};
