// Changes what belongs to others, and is killed on the way:
//   change_victim <folder> <moment>
// The moments are counted from 1: before a change is written down, between that and
// the change, and after it. With more moments than there are it ends by itself.
// "session.json" lies in the working folder, OpenVR's list in <folder> as a home.
#include "config/config_manager.h"
#include "session/change_record.h"

#include <QCoreApplication>

#include <csignal>
#include <utility>

namespace {

int momentsLeft = 0;

void moment()
{
    if (--momentsLeft == 0)
        std::raise(SIGKILL);
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 3)
        return 2;
    const QString &folder = arguments[1];
    momentsLeft = arguments[2].toInt();

    ChangeRecord record(folder, QStringLiteral("C:/KOLM"));
    ConfigManager config(folder, [] { return false; });
    const OutsideRecord told = record.callbacks();
    config.setOutsideRecord({[&](const OutsideEdit &edit) {
                                 moment();
                                 told.beforeEdit(edit);
                                 moment();
                             },
                             [&](const QString &path, const QString &newPath) {
                                 moment();
                                 told.beforeSetAside(path, newPath);
                                 moment();
                             }});
    // As a start and an end do it.
    config.clearExternalDrivers(folder);
    moment();
    config.loadDeviceSettings(false, 0);
    moment();
    config.applyStreamingSettings(1, 1, 1, true, false, false, false, false);
    moment();
    static_cast<void>(config.registerDriver(QStringLiteral("C:/KOLM"), folder));
    moment();
    config.clearExternalDrivers(folder);
    moment();
    config.writeSessionSerial();
    moment();
    return 0;
}
