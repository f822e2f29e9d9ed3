#include "simpc/sim_cell.h"

#include "base/clock.h"

#include <QFile>

#include <cerrno>
#include <chrono>
#include <mutex>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <unistd.h>

using namespace std::chrono_literals;

namespace {

struct Layout
{
    quint32 value;
    quint32 present;
};

constexpr auto pauseBetweenTries = 50ms;
constexpr int triesInTurn = 5;

// Whoever holds it is another process, to which no manual clock means anything.
bool lockFile(int fd, const SimCell::GoesOn &goesOn)
{
    for (int tries = 1; flock(fd, LOCK_EX | LOCK_NB) != 0; ++tries) {
        // A signal is no reason to go on without the lock.
        if (errno != EWOULDBLOCK && errno != EINTR)
            return false;
        if (tries % triesInTurn == 0 && goesOn && !goesOn())
            return false;
        Clock::system().sleep(pauseBetweenTries);
    }
    return true;
}

} // namespace

struct SimCell::Mapping
{
    int fd = -1; // below 0: only this process has the cell
    Layout own{0, 0};
    Layout *cell = &own;
    mutable std::mutex mutex;

    // Excludes the threads of this process with the mutex and the other
    // processes with a file lock, which the kernel takes back from a holder
    // that dies.
    class Lock
    {
    public:
        explicit Lock(const Mapping &mapping, const GoesOn &goesOn = {}) : mapping_(mapping)
        {
            mapping_.mutex.lock();
            held_ = mapping_.fd < 0 || lockFile(mapping_.fd, goesOn);
        }
        ~Lock()
        {
            if (mapping_.fd >= 0 && held_)
                flock(mapping_.fd, LOCK_UN);
            mapping_.mutex.unlock();
        }
        Lock(const Lock &) = delete;
        Lock &operator=(const Lock &) = delete;

        bool isHeld() const { return held_; }

    private:
        const Mapping &mapping_;
        bool held_ = false;
    };
};

SimCell::SimCell() : mapping_(std::make_unique<Mapping>()) {}

SimCell::SimCell(const QString &path) : mapping_(std::make_unique<Mapping>())
{
    mapping_->cell = nullptr;
    const int fd = open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (fd < 0)
        return;
    if (ftruncate(fd, sizeof(Layout)) == 0) {
        void *view = mmap(nullptr, sizeof(Layout), PROT_READ | PROT_WRITE, MAP_SHARED, fd, 0);
        if (view != MAP_FAILED)
            mapping_->cell = static_cast<Layout *>(view);
    }
    if (mapping_->cell)
        mapping_->fd = fd;
    else
        close(fd);
}

SimCell::~SimCell()
{
    if (mapping_->fd >= 0) {
        munmap(mapping_->cell, sizeof(Layout));
        close(mapping_->fd);
    }
}

bool SimCell::isValid() const
{
    return mapping_->cell != nullptr;
}

bool SimCell::read(quint32 *value, const GoesOn &goesOn) const
{
    if (!isValid())
        return false;
    const Mapping::Lock lock(*mapping_, goesOn);
    if (!lock.isHeld() || mapping_->cell->present == 0)
        return false;
    *value = mapping_->cell->value;
    return true;
}

bool SimCell::write(quint32 value, const GoesOn &goesOn)
{
    if (!isValid())
        return false;
    const Mapping::Lock lock(*mapping_, goesOn);
    if (!lock.isHeld())
        return false;
    mapping_->cell->value = value;
    mapping_->cell->present = 1;
    return true;
}

void SimCell::clear()
{
    if (!isValid())
        return;
    const Mapping::Lock lock(*mapping_);
    if (lock.isHeld())
        *mapping_->cell = Layout{0, 0};
}
