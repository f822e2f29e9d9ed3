// A timer for pages that goes by the product's clock.
#pragma once

#include <QObject>

class Clock;

// The type ClockTimer of QML: used as QML's own Timer, but its time is that of a
// Clock, so that a demonstration that lives faster, and a test, have it at hand.
// One that does not repeat stops before it is triggered. A new interval starts a
// running timer anew.
//
// GUI thread only.
class ClockTimer : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int interval READ interval WRITE setInterval NOTIFY intervalChanged) // ms
    Q_PROPERTY(bool running READ isRunning WRITE setRunning NOTIFY runningChanged)
    Q_PROPERTY(bool repeat READ repeats WRITE setRepeat NOTIFY repeatChanged)

public:
    explicit ClockTimer(QObject *parent = nullptr);
    // As above, by this clock, which outlives it.
    explicit ClockTimer(Clock &clock, QObject *parent = nullptr);
    ~ClockTimer() override;

    int interval() const { return interval_; }
    void setInterval(int milliseconds);
    bool isRunning() const { return running_; }
    void setRunning(bool running);
    bool repeats() const { return repeat_; }
    void setRepeat(bool repeat);

public slots:
    void start() { setRunning(true); }
    void stop() { setRunning(false); }
    // Starts, from the beginning if it runs already.
    void restart();

signals:
    void triggered();
    void intervalChanged();
    void runningChanged();
    void repeatChanged();

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    void schedule();

    Clock &clock_;
    int interval_ = 1000;
    bool running_ = false;
    bool repeat_ = false;
    int id_ = 0; // of the clock's timer; 0 while none is scheduled
};
