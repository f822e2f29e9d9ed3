// The genuine adb, on a port of its own, and a headset for it.
#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

// adb's server and files are this object's alone and end with it. The headset
// is the program adb-device-sim. Nothing touches the adb that the person at
// this machine may be using.
class GenuineAdb
{
public:
    // `dir` is an empty folder for adb's files.
    explicit GenuineAdb(const QString &dir);
    ~GenuineAdb();

    // What every process needs that is to talk to this adb.
    QProcessEnvironment environment() const { return environment_; }
    QString port() const { return environment_.value("ANDROID_ADB_SERVER_PORT"); }
    // The folder with the program.
    static QString folder();

    // Runs a call to its end; its standard output.
    QString call(const QStringList &arguments) const;
    // Whether its server runs; asking starts none.
    bool serverRuns() const;

    // Plugs the headset in, or pulls it out. What plugIn() returns is its
    // serial, or empty if it did not work.
    QString plugIn();
    void pullOut();
    // What the headset was asked, a line each.
    QStringList asked();

private:
    QProcessEnvironment environment_;
    QProcess headset_;
    QByteArray asked_;
};
