// A run of the program that shows itself: it prints the road of the connection
// as it is walked, takes a picture at its end and closes.
#pragma once

#include "controller/connection_road.h"

#include <QDateTime>
#include <QObject>
#include <QString>

#include <functional>

class Clock;
class QImage;
class QQuickWindow;

class Demonstration : public QObject
{
    Q_OBJECT

public:
    // What the environment asks for.
    struct Wishes
    {
        bool printRoad = false;      // SIMPC_ROAD: any text but "0"
        QString screenshot;          // SIMPC_SCREENSHOT: PNG file, when connected
        bool untilConnected = false; // SIMPC_UNTIL=connected: then the program closes
        int limitSeconds = 0;        // SIMPC_LIMIT: longest wait for that; 0: none

        static Wishes fromEnvironment();
    };

    // `road` outlives this object; `window` is the main window, null when there
    // is none.
    Demonstration(const Wishes &wishes, Clock &clock, const ConnectionRoad &road,
                  QQuickWindow *window, QObject *parent = nullptr);

    // One line of the road, with the time since the beginning. Any thread.
    void say(const QString &line) const;

    // 0, unless the headset was not connected in time.
    int result() const { return result_; }

signals:
    // Time to close the program, as the close button does.
    void closeRequested();

private:
    void onStage(int stage, bool reached);
    void onConnected();
    void onLimit();
    void takeScreenshot(const std::function<void()> &then);
    void saveScreenshot(const QImage &picture);

    Wishes wishes_;
    Clock &clock_;
    const ConnectionRoad &road_;
    QQuickWindow *window_;
    qint64 start_;
    QMetaObject::Connection firstFrame_;
    bool connected_ = false;
    int result_ = 0;
};
