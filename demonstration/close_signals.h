// Ending the program from a terminal or a script.
#pragma once

#include <QObject>

// Turns SIGINT and SIGTERM of this process into closeRequested() on the GUI
// thread, however busy that is at the moment. One at a time.
//
// The signals end nobody from heed() to the end of the process: one that comes
// before there is such an object is kept for it, and one that comes after it, while
// the program puts everything back in its place, changes nothing.
class CloseSignals : public QObject
{
    Q_OBJECT

public:
    // Heeds the signals if nobody has before.
    explicit CloseSignals(QObject *parent = nullptr);

    // As early as possible; needs nothing.
    static void heed();

signals:
    void closeRequested();
};
