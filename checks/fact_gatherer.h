// Asks what costs time on a thread of its own.
#pragma once

#include "checks/check.h"

#include <QObject>

#include <chrono>
#include <memory>

// One question after the other, each once however often it is put meanwhile.
// The thread begins with the first question. On the thread of its owner, which
// never waits for an answer.
class FactGatherer : public QObject
{
    Q_OBJECT

public:
    // How long the end waits for a question that is being asked. One that takes
    // longer is left behind and its answer is lost.
    static constexpr std::chrono::milliseconds longestEnd{3000};

    explicit FactGatherer(std::chrono::milliseconds patience = longestEnd,
                          QObject *parent = nullptr);
    ~FactGatherer() override;

    // Puts a question, unless it waits for its turn or its answer already.
    // `question` lasts as long as the process, as the rows of the table do.
    void ask(const checks::Question &question, const Facts &known);
    // Whether a question waits for its turn or its answer.
    bool isBusy() const;

signals:
    void answered(const checks::Question::Answer &answer);
    // After one or several answers that came together.
    void toldAll();

protected:
    void customEvent(QEvent *event) override;

private:
    struct Shared;
    static void work(const std::shared_ptr<Shared> &shared);

    const std::chrono::milliseconds patience_;
    // Outlives this object where a question is left behind.
    std::shared_ptr<Shared> shared_;
};
