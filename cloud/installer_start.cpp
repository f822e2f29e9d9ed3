#include "cloud/installer_start.h"

#include "base/clock.h"

#include <QDebug>

#include <chrono>

namespace {

using namespace std::chrono_literals;

constexpr auto interval = 250ms;
constexpr int tries = 12;

} // namespace

void startInstaller(const QString &path, Clock &clock,
                    const std::function<bool(const QString &)> &start)
{
    for (int i = 0; !start(path); ++i) {
        if (i == tries) {
            qInfo().noquote() << "The installer could not be started:" << path;
            return;
        }
        if (i == 0)
            qInfo("The installer cannot be started yet, trying again");
        clock.sleep(interval);
    }
}
