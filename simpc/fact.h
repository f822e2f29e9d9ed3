// Facts: what a PC is asked for and simply knows.
#pragma once

#include "base/mutex.h"
#include "simpc/key_table.h"
#include "simpc/sim_timeline.h"
#include "simpc/value_kind.h"

#include <QString>

#include <functional>
#include <utility>
#include <vector>

class FactTable;

// What a scenario says about a fact.
struct FactChange
{
    std::function<void(FactTable &facts)> apply;
    QString event; // what people are told of it
};

// The key of a fact in a scenario.
struct FactName
{
    FactName(const char *name) : key(name) {}

    const char *key;
    const char *event = ""; // what an event calls the fact; empty: it never changes
};

// The same of a fact that may change in the course of a scenario.
inline FactName changing(const char *key, const char *event)
{
    FactName name(key);
    name.event = event;
    return name;
}

class AnyFact
{
public:
    AnyFact(const AnyFact &) = delete;
    AnyFact &operator=(const AnyFact &) = delete;

    // Its key in a scenario; the key is empty if a scenario cannot say it.
    const KeyRow &row() const { return row_; }
    // What the scenario says under the key, which is there.
    virtual FactChange read(ObjectReader &reader) const = 0;

protected:
    AnyFact(FactTable *table, KeyRow row, const char *event);
    ~AnyFact() = default;

    KeyRow row_;
    const QString event_;
    const size_t place_; // in the table
};

// The facts of one PC: a class whose members are Fact<T>, each made with this
// as its table.
class FactTable
{
public:
    // Without a timeline the facts are nobody's, of use for their keys.
    explicit FactTable(const SimTimeline *timeline = nullptr) : timeline_(timeline) {}

    FactTable(const FactTable &) = delete;
    FactTable &operator=(const FactTable &) = delete;

    // In the order in which they are declared.
    const std::vector<AnyFact *> &all() const { return all_; }

private:
    friend class AnyFact;
    template <typename T>
    friend class Fact;

    void settle() const
    {
        if (timeline_)
            timeline_->settle();
    }

    const SimTimeline *const timeline_;
    std::vector<AnyFact *> all_;
    mutable Mutex mutex_; // guards the facts' values
};

// One of them. Any thread.
template <typename T>
class Fact final : public AnyFact
{
public:
    Fact(FactTable *table, const FactName &name, const ValueKind<T> &kind, const T &value,
         const char *meaning)
        : AnyFact(table, keyRow(name.key, kind, value, meaning), name.event), table_(*table),
          kind_(kind), value_(value)
    {
    }

    T get() const
    {
        table_.settle();
        const MutexLock lock(table_.mutex_);
        return value_;
    }
    void set(const T &value)
    {
        const MutexLock lock(table_.mutex_);
        value_ = value;
    }

    FactChange read(ObjectReader &reader) const override
    {
        const T value = kind_.read(reader, row_.key);
        return {[place = place_, value](FactTable &facts) {
                    static_cast<Fact<T> *>(facts.all_[place])->set(value);
                },
                event_ + QStringLiteral(": ") + kind_.text(value)};
    }

private:
    FactTable &table_;
    const ValueKind<T> kind_;
    T value_ GUARDED_BY(table_.mutex_);
};
