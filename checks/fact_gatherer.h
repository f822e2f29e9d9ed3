// Asks what costs time on a thread of its own.
#pragma once

#include "base/background.h"
#include "checks/check.h"

#include <QObject>

#include <chrono>
#include <set>

// One question after the other, each once however often it is put meanwhile. On
// the thread of its owner, which never waits for an answer. At its end a question
// that takes too long is left behind and its answer is lost.
class FactGatherer : public QObject
{
    Q_OBJECT

public:
    explicit FactGatherer(std::chrono::milliseconds patience = Background::longestEnd,
                          QObject *parent = nullptr);

    // Puts a question, unless it waits for its turn or its answer already. False when
    // there is no thread to ask it on: it is not put then.
    // `question` lasts as long as the process, as the rows of the table do.
    bool ask(const checks::Question &question, const Facts &known);
    // Whether a question waits for its turn or its answer.
    bool isBusy() const { return background_.isBusy(); }

signals:
    void answered(const checks::Question::Answer &answer);
    // After one or several answers that came together.
    void toldAll();

private:
    std::set<const checks::Question *> put_;
    Background background_;
};
