// A program that uses the process-wide manager until it has seen a headset and
// then ends, as the assistant does.
#include "base/clock.h"
#include "usb/adb_manger.h"

#include <QCoreApplication>

#include <chrono>
#include <functional>

namespace {

constexpr std::chrono::milliseconds lookInterval(1000);
constexpr std::chrono::milliseconds limit(30000);

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    AdbManger &adb = AdbManger::instance();
    QObject::connect(&adb, &AdbManger::deviceConnect, &app, [](bool connect) {
        if (connect)
            QCoreApplication::exit(0);
    });
    const std::function<void()> look = [&] {
        adb.checkDevice();
        Clock::system().singleShot(lookInterval, &app, look);
    };
    look();
    Clock::system().singleShot(limit, &app, [] { QCoreApplication::exit(1); });
    return QCoreApplication::exec();
}
