#include "simpc/sim_pc.h"

#include <QMutexLocker>

#include <algorithm>

namespace {

SimPc *currentPc = nullptr;

QString baseName(const QString &program)
{
    const int slash = std::max(program.lastIndexOf('/'), program.lastIndexOf('\\'));
    return program.mid(slash + 1).toLower();
}

} // namespace

SimPc::SimPc(Clock &clock) : clock_(clock), cell_(std::make_unique<SimCell>())
{
    Q_ASSERT(!currentPc);
    currentPc = this;
}

SimPc::~SimPc()
{
    currentPc = nullptr;
}

SimPc &SimPc::current()
{
    Q_ASSERT(currentPc);
    return *currentPc;
}

bool SimPc::exists()
{
    return currentPc != nullptr;
}

void SimPc::setRegistryText(const QString &key, const QString &name, const QString &value)
{
    const QMutexLocker lock(&mutex_);
    registry_[key][name] = value;
}

void SimPc::addRegistryKey(const QString &key)
{
    const QMutexLocker lock(&mutex_);
    registry_[key];
}

void SimPc::removeRegistryKey(const QString &key)
{
    const QMutexLocker lock(&mutex_);
    for (auto it = registry_.begin(); it != registry_.end();) {
        if (it.key() == key || it.key().startsWith(key + '\\'))
            it = registry_.erase(it);
        else
            ++it;
    }
}

bool SimPc::hasRegistryKey(const QString &key) const
{
    settle();
    const QMutexLocker lock(&mutex_);
    return std::any_of(registry_.keyBegin(), registry_.keyEnd(), [&](const QString &existing) {
        return existing == key || existing.startsWith(key + '\\');
    });
}

std::optional<QString> SimPc::registryText(const QString &key, const QString &name) const
{
    settle();
    const QMutexLocker lock(&mutex_);
    const auto values = registry_.constFind(key);
    if (values == registry_.constEnd() || !values->contains(name))
        return std::nullopt;
    return values->value(name);
}

QStringList SimPc::registrySubkeys(const QString &key) const
{
    settle();
    const QMutexLocker lock(&mutex_);
    QStringList names;
    const QString prefix = key + '\\';
    for (auto it = registry_.keyBegin(); it != registry_.keyEnd(); ++it) {
        if (!it->startsWith(prefix))
            continue;
        const QString name = it->mid(prefix.size()).section('\\', 0, 0);
        if (!names.contains(name))
            names.append(name);
    }
    return names;
}

quint32 SimPc::startProcess(const QString &name, const QString &path)
{
    const QMutexLocker lock(&mutex_);
    const quint32 pid = nextPid_;
    nextPid_ += 4;
    processes_.push_back({pid, name, path});
    return pid;
}

void SimPc::endProcess(quint32 pid)
{
    const QMutexLocker lock(&mutex_);
    processes_.erase(std::remove_if(processes_.begin(), processes_.end(),
                                    [&](const SimProcess &p) { return p.pid == pid; }),
                     processes_.end());
}

void SimPc::endProcesses(const QString &name)
{
    const QMutexLocker lock(&mutex_);
    processes_.erase(std::remove_if(processes_.begin(), processes_.end(),
                                    [&](const SimProcess &p) { return p.name == name; }),
                     processes_.end());
}

bool SimPc::isRunning(const QString &name) const
{
    const std::vector<SimProcess> all = processes();
    return std::any_of(all.begin(), all.end(),
                       [&](const SimProcess &p) { return p.name == name; });
}

std::vector<SimProcess> SimPc::processes() const
{
    settle();
    const QMutexLocker lock(&mutex_);
    return processes_;
}

void SimPc::setAcLine(std::optional<int> status)
{
    const QMutexLocker lock(&mutex_);
    acLine_ = status;
}

std::optional<int> SimPc::acLine() const
{
    settle();
    const QMutexLocker lock(&mutex_);
    return acLine_;
}

void SimPc::setTotalMemory(quint64 bytes)
{
    const QMutexLocker lock(&mutex_);
    totalMemory_ = bytes;
}

quint64 SimPc::totalMemory() const
{
    const QMutexLocker lock(&mutex_);
    return totalMemory_;
}

void SimPc::setNetworkProfileText(const QString &text)
{
    const QMutexLocker lock(&mutex_);
    networkProfile_ = text;
}

QString SimPc::networkProfileText() const
{
    settle();
    const QMutexLocker lock(&mutex_);
    return networkProfile_;
}

void SimPc::setRecordingDevices(const QStringList &names)
{
    const QMutexLocker lock(&mutex_);
    recordingDevices_ = names;
}

QStringList SimPc::recordingDevices() const
{
    settle();
    const QMutexLocker lock(&mutex_);
    return recordingDevices_;
}

void SimPc::setWaveOuts(const std::vector<SimWaveOut> &devices)
{
    const QMutexLocker lock(&mutex_);
    waveOuts_ = devices;
}

std::vector<SimWaveOut> SimPc::waveOuts() const
{
    settle();
    const QMutexLocker lock(&mutex_);
    return waveOuts_;
}

SimCell &SimPc::cell() const
{
    settle();
    const QMutexLocker lock(&mutex_);
    return *cell_;
}

void SimPc::setCell(std::unique_ptr<SimCell> cell)
{
    const QMutexLocker lock(&mutex_);
    cell_ = std::move(cell);
}

void SimPc::onLaunch(const QString &programName, LaunchHandler handler)
{
    const QMutexLocker lock(&mutex_);
    launchHandlers_[programName.toLower()] = std::move(handler);
}

SimLaunchResult SimPc::launch(const SimLaunch &request)
{
    settle();
    record("launch " + request.program + (request.parameters.isEmpty() ? "" : " ")
           + request.parameters + (request.hidden ? " (hidden)" : ""));
    LaunchHandler handler;
    {
        const QMutexLocker lock(&mutex_);
        handler = launchHandlers_.value(baseName(request.program));
    }
    if (!handler)
        return {false, 2, false, 0};
    return handler(request);
}

void SimPc::after(int milliseconds, std::function<void()> change)
{
    std::function<void()> notify;
    {
        const QMutexLocker lock(&mutex_);
        changes_.push_back({clock_.elapsed() + milliseconds, order_++, std::move(change)});
        notify = plannedListener_;
    }
    if (notify)
        notify();
}

void SimPc::settle() const
{
    for (;;) {
        Change next;
        {
            const QMutexLocker lock(&mutex_);
            const auto first = std::min_element(changes_.begin(), changes_.end(),
                                                [](const Change &a, const Change &b) {
                                                    return a.due != b.due ? a.due < b.due
                                                                          : a.order < b.order;
                                                });
            if (first == changes_.end() || first->due > clock_.elapsed())
                return;
            next = std::move(*first);
            changes_.erase(first);
        }
        next.happen();
    }
}

std::optional<qint64> SimPc::nextChange() const
{
    const QMutexLocker lock(&mutex_);
    std::optional<qint64> next;
    for (const Change &change : changes_) {
        if (!next || change.due < *next)
            next = change.due;
    }
    return next;
}

void SimPc::onPlanned(std::function<void()> notify)
{
    const QMutexLocker lock(&mutex_);
    plannedListener_ = std::move(notify);
}

void SimPc::record(const QString &line)
{
    std::function<void(const QString &)> listener;
    {
        const QMutexLocker lock(&mutex_);
        journal_.append(line);
        listener = journalListener_;
    }
    if (listener)
        listener(line);
}

QStringList SimPc::journal() const
{
    const QMutexLocker lock(&mutex_);
    return journal_;
}

void SimPc::clearJournal()
{
    const QMutexLocker lock(&mutex_);
    journal_.clear();
}

void SimPc::onJournal(std::function<void(const QString &)> listener)
{
    const QMutexLocker lock(&mutex_);
    journalListener_ = std::move(listener);
}
