#include "checks/fact_gatherer.h"

using checks::Question;

FactGatherer::FactGatherer(std::chrono::milliseconds patience, QObject *parent)
    : QObject(parent), background_(patience)
{
    connect(&background_, &Background::resultsTaken, this, &FactGatherer::toldAll);
}

void FactGatherer::ask(const Question &question, const Facts &known)
{
    if (!put_.insert(&question).second)
        return;
    background_.run([this, question = &question, known]() -> Background::Result {
        // Only the result is the owner's again.
        Question::Answer answer = question->ask(known);
        return [this, question, answer] {
            put_.erase(question);
            emit answered(answer);
        };
    });
}
