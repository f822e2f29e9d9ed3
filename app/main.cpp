#include "app/application_font.h"
#include "app/host.h"
#include "app/log_file.h"
#include "app/product.h"
#include "app/qml_loading.h"
#include "app/translation.h"
#include "cloud/cloud_host.h"
#include "pc/single_instance.h"
#include "ui/frameless_quick_window.h"
#include "ui/qml_types.h"

#include <QDir>
#include <QGuiApplication>
#include <QIcon>
#include <QLocale>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QStandardPaths>
#include <QUrl>

#include <iostream>

int main(int argc, char *argv[])
{
    // Narrow and wide console output are used side by side.
    std::ios::sync_with_stdio(false);

    // All images together are small: without these, Qt Quick keeps a texture as
    // large as the window for them, which a game could use.
    for (const char *side : {"QSG_ATLAS_WIDTH", "QSG_ATLAS_HEIGHT"}) {
        if (!qEnvironmentVariableIsSet(side))
            qputenv(side, "512");
    }

    // Letters as the system draws them: sharper at these sizes than those that
    // Qt Quick makes for scaling, and there much sooner.
    QQuickWindow::setTextRenderType(QQuickWindow::NativeTextRendering);

    Host host;
    QGuiApplication app(argc, argv);
    installLogFile();
    initProductResources();
    const QLocale locale;
    installTranslation(locale.language(), &app);
    setApplicationFont(QStringLiteral(":/res/SourceHanSansCN-Medium.ttf"));
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/res/image/orb.ico")));
    QCoreApplication::setOrganizationName(QStringLiteral("KOLM"));
    // The log, the settings and the recent headsets go there; none of them
    // makes the folder.
    QDir().mkpath(QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation));

    QQmlApplicationEngine engine;
    FramelessQuickWindow::setSharedEngine(&engine);
    registerUiTypes();
    const SingleInstance instance;
    if (instance.isFirst()) {
        if (const std::optional<QString> cloudHost = host.cloudHost())
            cloud::useHost(*cloudHost);
        Product product(locale, &app);
        product.publish(engine);
        loadWindow(engine, QUrl(QStringLiteral("qrc:/qml/mainWindow.qml")));
        host.attach(engine, &product.road());
        return host.exitCode(QGuiApplication::exec());
    }
    loadWindow(engine, QUrl(QStringLiteral("qrc:/qml/windows/SingleAppTip.qml")));
    host.attach(engine, nullptr);
    return host.exitCode(QGuiApplication::exec());
}
