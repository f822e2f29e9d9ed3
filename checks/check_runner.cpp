#include "checks/check_runner.h"

#include "base/clock.h"

using checks::Action;
using checks::Assessment;
using checks::Check;
using checks::Question;
using std::chrono::milliseconds;

CheckRunner::CheckRunner(Clock &clock, const checks::Table &table, QObject *parent)
    : QObject(parent), clock_(clock), table_(table)
{
    connect(&model_, &FindingList::acted, this, &CheckRunner::act);
    connect(&gatherer_, &FactGatherer::answered, this,
            [this](const Question::Answer &answer) { answer(facts_); });
    connect(&gatherer_, &FactGatherer::toldAll, this, [this] {
        assess();
        model_.setAsking(gatherer_.isBusy());
    });
}

milliseconds CheckRunner::now() const
{
    return milliseconds(clock_.elapsed());
}

void CheckRunner::start()
{
    askWhere([](const Question &question, size_t) { return question.when == Question::AtStart; });
    assess();
}

void CheckRunner::judge()
{
    noteProgress();
    assess();
    askWhere([this](const Question &question, size_t row) {
        return isDue(question, heldSince_[row].has_value());
    });
}

void CheckRunner::askAll()
{
    askWhere([](const Question &, size_t) { return true; });
}

void CheckRunner::assess()
{
    Assessment assessment = checks::assess(table_, facts_, heldSince_, now());
    heldSince_ = std::move(assessment.heldSince);
    model_.showAll(assessment.findings);
}

void CheckRunner::noteProgress()
{
    if (facts_.reached == reached_)
        return;
    reached_ = facts_.reached;
    reachedSince_ = now();
}

bool CheckRunner::hangs() const
{
    return reached_ && *reached_ < stageCount && now() - reachedSince_ >= hangsAfter;
}

void CheckRunner::askWhere(const std::function<bool(const Question &, size_t row)> &wanted)
{
    std::set<const Question *> asked;
    for (size_t row = 0; row < table_.size(); ++row) {
        const Question *question = table_[row].question;
        if (!question || asked.count(question) != 0 || !wanted(*question, row))
            continue;
        asked.insert(question);
        if (gatherer_.ask(*question, facts_)) {
            askedAt_[question] = now();
            unasked_.erase(question);
        } else {
            unasked_.insert(question);
        }
    }
    model_.setAsking(gatherer_.isBusy());
}

bool CheckRunner::isDue(const Question &question, bool found) const
{
    if (unasked_.count(&question) != 0)
        return true;
    const auto asked = askedAt_.find(&question);
    if (asked != askedAt_.end() && now() - asked->second < question.again)
        return false;
    return found || (question.when == Question::WhileHanging && hangs());
}

void CheckRunner::act(const Action &action)
{
    switch (action.kind) {
    case Action::None:
        break;
    case Action::CheckAgain:
        askAll();
        break;
    case Action::OpenPage:
        emit model_.pageWanted(QString::fromLatin1(action.target));
        break;
    default:
        emit actionWanted(action);
    }
}
