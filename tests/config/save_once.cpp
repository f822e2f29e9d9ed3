// Saves one of the files once, so that a test can interrupt it at any step:
//   save_once <file> <folder> [finish]
// or only does what a start does about a save that was interrupted.
// Before and after the save it asks for a file "save begins" and a file "save
// ends" in the folder, which shows in a list of its system calls.
#include "base/file_io.h"
#include "config/config_manager.h"
#include "config/openvr_paths.h"
#include "config/recent_headsets.h"

#include <QCoreApplication>
#include <QFile>

#include <functional>

int main(int argc, char *argv[])
{
    const QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 3)
        return 2;
    const QString &file = arguments[1];
    const QString &folder = arguments[2];
    if (arguments.size() > 3) {
        finishReplacement(file == QLatin1String("set.json") ? folder + '/' + file
                                                            : openvr_paths::path(folder));
        return 0;
    }
    ConfigManager config(folder, [] { return false; });

    std::function<void()> save;
    if (file == QLatin1String("set.json")) {
        config.loadDeviceSettings(false, 0);
        config.setBitRate(77, true, 3);
        save = [&] { config.saveDeviceSettings(QStringLiteral("D2-new")); };
    } else if (file == QLatin1String("setting.inf")) {
        QStringList serials = recent_headsets::load(folder);
        // The interrupted save may have been finished.
        if (!serials.contains(QStringLiteral("D3-new")))
            serials << QStringLiteral("D3-new");
        save = [&, serials] { static_cast<void>(recent_headsets::save(folder, serials)); };
    } else if (file == QLatin1String("session.json")) {
        save = [&] { config.writeSessionSerial(); };
    } else {
        save = [&] { config.clearExternalDrivers(folder); };
    }

    QFile::exists(folder + QLatin1String("/save begins"));
    save();
    QFile::exists(folder + QLatin1String("/save ends"));
    return 0;
}
