#include "base/detached_output.h"

#include "base/threads.h"

#include <QFile>
#include <QString>

#include <algorithm>
#include <thread>
#include <utility>

namespace {

// What is written at once. Small, so that it shows whether somebody reads.
constexpr std::size_t piece = 4096;

std::string toBytes(std::string text)
{
    return text;
}

std::string toBytes(const std::wstring &text)
{
    return QString::fromStdWString(text).toLocal8Bit().toStdString();
}

} // namespace

struct DetachedOutput::Shared
{
    explicit Shared(int to) : descriptor(to) {}

    const int descriptor;
    Mutex mutex;
    Condition changed;
    std::string waiting GUARDED_BY(mutex);
    quint64 pieces GUARDED_BY(mutex) = 0; // taken so far
    bool begun GUARDED_BY(mutex) = false; // the thread
    bool busy GUARDED_BY(mutex) = false;
    bool ending GUARDED_BY(mutex) = false;
};

DetachedOutput::DetachedOutput(int descriptor) : shared_(std::make_shared<Shared>(descriptor)) {}

DetachedOutput::~DetachedOutput()
{
    const MutexLock lock(shared_->mutex);
    shared_->ending = true;
    shared_->changed.notifyAll();
}

void DetachedOutput::write(const std::string &bytes)
{
    const MutexLock lock(shared_->mutex);
    std::string &waiting = shared_->waiting;
    if (!waiting.empty() && waiting.size() + bytes.size() > capacity)
        return;
    if (!shared_->begun) {
        // What is logged comes here as well.
        std::thread thread = threads::beginQuietly([shared = shared_] { work(shared); });
        if (!thread.joinable())
            return; // with the next one perhaps
        thread.detach();
        shared_->begun = true;
    }
    waiting += bytes;
    shared_->changed.notifyAll();
}

void DetachedOutput::work(const std::shared_ptr<Shared> &shared)
{
    QFile file;
    const bool isOpen = file.open(shared->descriptor, QIODevice::WriteOnly | QIODevice::Unbuffered);
    MutexLock lock(shared->mutex);
    for (;;) {
        while (shared->waiting.empty() && !shared->ending)
            shared->changed.wait(lock);
        if (shared->waiting.empty())
            return;
        const std::string taken = std::exchange(shared->waiting, {});
        shared->busy = true;
        for (std::size_t at = 0; at < taken.size(); at += piece) {
            lock.unlock();
            if (isOpen)
                file.write(taken.data() + at,
                           static_cast<qint64>(std::min(piece, taken.size() - at)));
            lock.lock();
            ++shared->pieces;
            shared->changed.notifyAll();
        }
        shared->busy = false;
        shared->changed.notifyAll();
    }
}

bool DetachedOutput::finish()
{
    Shared &shared = *shared_;
    MutexLock lock(shared.mutex);
    for (auto waited = patience * 0; waited < longestFinish; waited += patience) {
        const quint64 before = shared.pieces;
        const bool done = shared.changed.waitFor(lock, patience, [&]() REQUIRES(shared.mutex) {
            return !shared.busy && shared.waiting.empty();
        });
        if (done)
            return true;
        if (shared.pieces == before)
            return false;
    }
    return false;
}

template <typename Char>
int DetachedBuffer<Char>::sync()
{
    std::basic_string<Char> text;
    {
        const MutexLock lock(mutex_);
        text = std::exchange(text_, {});
    }
    if (!text.empty())
        output_.write(toBytes(std::move(text)));
    return 0;
}

template class DetachedBuffer<char>;
template class DetachedBuffer<wchar_t>;
