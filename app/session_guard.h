// What the program does when the user's session ends.
#pragma once

#include <QAbstractNativeEventFilter>

#include <functional>

// Answers the system itself, so that Qt does not: Qt would close the windows at the
// question already, and with them the program, SteamVR and the game, also when
// another program refuses the log-off afterwards.
//
// GUI thread. Heard from its construction on, as long as the application lives.
class SessionGuard : public QAbstractNativeEventFilter
{
public:
    // `store` is called once, when the session ends, and puts in order what must not
    // be lost, within a second or two. `end` is called after the system has its
    // answer, and ends the process.
    SessionGuard(std::function<void()> store, std::function<void()> end);
    ~SessionGuard() override;

    bool nativeEventFilter(const QByteArray &eventType, void *message, long *result) override;

private:
    const std::function<void()> store_;
    const std::function<void()> end_;
    bool over_ = false;
};
