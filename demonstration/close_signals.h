// Ending the program from a terminal or a script.
#pragma once

#include <QObject>

// Turns SIGINT and SIGTERM of this process into closeRequested() on the GUI
// thread, however busy that is at the moment. One at a time.
class CloseSignals : public QObject
{
    Q_OBJECT

public:
    explicit CloseSignals(QObject *parent = nullptr);
    ~CloseSignals() override;

signals:
    void closeRequested();
};
