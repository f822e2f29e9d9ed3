// A run of the program that shows itself: it says how far the connection has
// come, takes a picture at its end and closes.
#pragma once

#include "controller/connection_stages.h"
#include "demonstration/wishes.h"

#include <QObject>
#include <QString>

#include <functional>

class Clock;
class QImage;
class QQuickWindow;

// GUI thread.
class Demonstration : public QObject
{
    Q_OBJECT

public:
    using Say = std::function<void(const QString &line)>;

    // Says each stage that is reached or lost, and what else there is to tell;
    // `say` is empty when nobody wants to hear it. `stages` outlives this object;
    // `window` is the main window, null when there is none.
    Demonstration(const Wishes &wishes, Clock &clock, const ConnectionStages &stages,
                  QQuickWindow *window, Say say, QObject *parent = nullptr);

    // 0, unless the headset was not connected in time or the picture could not
    // be saved: a code of exit_codes.h.
    int result() const { return result_; }

signals:
    // Time to close the program, as the close button does.
    void closeRequested();

private:
    void say(const QString &line) const;
    void onStage(int stage, bool reached);
    void onConnected();
    void onLimit();
    void takeScreenshot(const std::function<void()> &then);
    void saveScreenshot(const QImage &picture);

    const Wishes wishes_;
    Clock &clock_;
    const ConnectionStages &stages_;
    QQuickWindow *window_;
    const Say say_;
    QMetaObject::Connection firstFrame_;
    bool connected_ = false;
    int result_ = 0;
};
