#include "demonstration/progress_printer.h"

#include "base/clock.h"

#include <utility>

ProgressPrinter::ProgressPrinter(Clock &clock, Print print)
    : clock_(clock), print_(std::move(print))
{
}

void ProgressPrinter::say(const QString &line)
{
    const MutexLock lock(mutex_);
    if (begun_)
        print(line);
    else
        kept_.append(line);
}

void ProgressPrinter::begin()
{
    const MutexLock lock(mutex_);
    begun_ = true;
    start_ = clock_.elapsed();
    for (const QString &line : qAsConst(kept_))
        print(line);
    kept_.clear();
}

void ProgressPrinter::print(const QString &line) const
{
    const double seconds = static_cast<double>(clock_.elapsed() - start_) / 1000;
    print_(QStringLiteral("progress: %1 s  %2").arg(seconds, 6, 'f', 1).arg(line).toStdString());
}
