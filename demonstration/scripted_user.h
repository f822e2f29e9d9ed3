// Somebody at the screen who does what a script says, line by line, and answers
// each line. For tests and for pictures.
#pragma once

#include "demonstration/script.h"

#include <QByteArray>
#include <QObject>
#include <QQueue>
#include <QString>

#include <functional>

class Clock;

// The lines and the answers are told in demonstration/README.md. GUI thread.
class ScriptedUser : public QObject
{
    Q_OBJECT

public:
    using Say = std::function<void(const QString &line)>;

    // Each answer is a line for `say`. The clock and what the scene consists of
    // outlive this object.
    ScriptedUser(Clock &clock, const script::Scene &scene, Say say, QObject *parent = nullptr);

    // More of the script, in UTF-8. A line counts as soon as its end has come,
    // and is carried out when those before it are done.
    void hear(const QByteArray &bytes);
    // What has not been begun is forgotten; before the event loop ends.
    void stop();

    // 0, unless a line could not be carried out: a code of exit_codes.h.
    int result() const { return result_; }

signals:
    // Time to close the program, as the close button does.
    void closeRequested();

private:
    void next();
    void carryOut(const script::Pause &pause);
    void carryOut(const script::Act &act);
    void carryOut(const script::Close &close);
    void carryOut(const script::Senseless &senseless);
    void askUntilReady(const script::Act &act, qint64 since);
    void answer(const QString &text);
    void fail(const QString &reason);

    Clock &clock_;
    const script::Scene scene_;
    const Say say_;
    QByteArray input_; // the beginning of a line
    QQueue<QString> lines_;
    QString line_; // under way
    bool busy_ = false;
    int result_ = 0;
};
