// Somebody at the screen: carries out, line by line, what the standard input
// says, through the windows of the program, and answers on the standard output.
// For tests and for pictures.
#pragma once

#include <QObject>
#include <QQueue>
#include <QStringList>

#include <atomic>
#include <functional>

class Clock;
class ConnectionRoad;
class QQuickItem;
class QQuickWindow;
class QSocketNotifier;

// The lines and the answers are told in simpc/README.md. GUI thread.
class ScriptedUser : public QObject
{
    Q_OBJECT

public:
    // `road` is null in a second copy. Both outlive this object.
    ScriptedUser(Clock &clock, QQuickWindow &window, const ConnectionRoad *road,
                 QObject *parent = nullptr);
    // 0, unless a line could not be carried out.
    int result() const { return result_; }
    // No line is read any more; before the event loop ends.
    void stop();

signals:
    // Time to close the program, as the close button does.
    void closeRequested();

private:
    void readLines();
    void next();
    void carryOut(const QString &line);
    // Does what the line says once `isSo` holds, and answers.
    void await(std::function<bool()> isSo);
    void ask();
    void doNow();
    void answer(const QString &text);
    void fail(const QString &line, const QString &reason);

    QString act(const QString &verb, const QString &rest);
    std::function<bool()> condition(const QStringList &words) const;
    QQuickItem *find(const QString &name) const;
    QString point(const QString &name, bool click);
    QString pressKey(const QString &name);
    void type(const QString &text);
    QString picture(const QString &path);

    Clock &clock_;
    QQuickWindow &window_;
    const ConnectionRoad *road_;
    QSocketNotifier *notifier_;
    QByteArray input_;
    QQueue<QString> lines_;
    QString line_; // under way
    std::function<bool()> awaited_;
    qint64 askingSince_ = 0;
    bool busy_ = false;
    std::atomic<int> frames_{0}; // the render thread counts them
    int result_ = 0;
};
