// What has become of the user's feedback, for the pages.
#pragma once

#include <QObject>

// A value that the page binds; the controller sets it. GUI thread.
class FeedbackStatus : public QObject
{
    Q_OBJECT
    Q_PROPERTY(State state READ state NOTIFY changed)

public:
    enum State {
        None,       // nothing was handed in yet
        Sending,    // it is on the disk, and on its way
        Sent,       // the cloud has taken it
        Kept,       // it is on the disk, and the cloud has not taken it
        NotWritten, // it is nowhere
    };
    Q_ENUM(State)

    using QObject::QObject;

    State state() const { return state_; }
    void set(State state);

signals:
    void changed();

private:
    State state_ = None;
};
