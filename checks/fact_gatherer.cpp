#include "checks/fact_gatherer.h"

using checks::Question;

FactGatherer::FactGatherer(std::chrono::milliseconds patience, QObject *parent)
    : QObject(parent), background_("facts", patience)
{
    connect(&background_, &Background::resultsTaken, this, &FactGatherer::toldAll);
}

bool FactGatherer::ask(const Question &question, const Facts &known)
{
    if (!put_.insert(&question).second)
        return true;
    const bool isPut = background_.run([this, question = &question, known]() -> Background::Result {
        // Only the result is the owner's again.
        Question::Answer answer = question->ask(known);
        return [this, question, answer] {
            put_.erase(question);
            emit answered(answer);
        };
    });
    if (!isPut)
        put_.erase(&question);
    return isPut;
}
