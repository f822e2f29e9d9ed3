// Keeps the facts, has them judged, and lets the pages see what was found.
#pragma once

#include "checks/assessment.h"
#include "checks/check_model.h"
#include "checks/fact_gatherer.h"

#include <QObject>

#include <chrono>
#include <functional>
#include <map>
#include <set>

class Clock;

// Whoever learns something puts it into facts(); judge() then says what it
// means. What costs time is asked by a gatherer, as the table says when; its
// answers are judged as they come. GUI thread.
class CheckRunner : public QObject
{
    Q_OBJECT

public:
    // So long has the connection to stand still for it to count as hanging.
    static constexpr std::chrono::milliseconds hangsAfter{20000};

    // Both outlive the object.
    CheckRunner(Clock &clock, const checks::Table &table, QObject *parent = nullptr);

    Facts &facts() { return facts_; }
    CheckModel &model() { return model_; }

    // The program begins its work.
    void start();
    // Judges the facts, and asks anew what has to be asked by now.
    void judge();
    // Somebody wants to know: asks everything now.
    void askAll();

signals:
    // The user wants this to be done; what is neither asking again nor opening
    // a page.
    void actionWanted(const checks::Action &action);

private:
    std::chrono::milliseconds now() const;
    bool hangs() const;
    void assess();
    void noteProgress();
    // Asks those questions of the table for which `wanted` is true, each once.
    void askWhere(const std::function<bool(const checks::Question &, size_t row)> &wanted);
    bool isDue(const checks::Question &question, bool found) const;
    void act(const checks::Action &action);

    Clock &clock_;
    const checks::Table &table_;
    Facts facts_;
    checks::HeldSince heldSince_;
    CheckModel model_;
    std::map<const checks::Question *, std::chrono::milliseconds> askedAt_;
    std::set<const checks::Question *> unasked_; // for want of a thread
    // How far the connection was, and since when.
    std::optional<int> reached_;
    std::chrono::milliseconds reachedSince_{0};
    FactGatherer gatherer_;
};
