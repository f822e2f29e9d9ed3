// Work that may take the system seconds, on a thread of its own.
#pragma once

#include <QObject>

#include <chrono>
#include <functional>
#include <memory>

// One piece of work after the other, in the order in which they were handed in.
// The thread begins with the first. On the thread of its owner, which never waits
// for a result.
class Background : public QObject
{
    Q_OBJECT

public:
    // What is made of the work, on the owner's thread; may be empty.
    using Result = std::function<void()>;
    // The work itself, on the other thread. It touches nothing of the owner's:
    // where it is left behind, it outlives it.
    using Work = std::function<Result()>;

    // How long the end waits for the work at hand. What takes longer is left
    // behind; its result, as that of everything that waits, is lost.
    static constexpr std::chrono::milliseconds longestEnd{3000};

    // `purpose` is what the thread is for, in a few words; it lasts as long as the process.
    explicit Background(const char *purpose, std::chrono::milliseconds patience = longestEnd,
                        QObject *parent = nullptr);
    ~Background() override;

    // Whether the work will be done. Otherwise there is no thread to be had and nothing
    // becomes of it; the next work may find one.
    bool run(Work work);
    // Whether work waits for its turn, is being done, or has a result that was not
    // taken yet.
    bool isBusy() const;

signals:
    // After one or several results that came together.
    void resultsTaken();

protected:
    void customEvent(QEvent *event) override;

private:
    struct Shared;
    static void work(const std::shared_ptr<Shared> &shared);

    const char *const purpose_;
    const std::chrono::milliseconds patience_;
    // Outlives this object where work is left behind.
    std::shared_ptr<Shared> shared_;
};
