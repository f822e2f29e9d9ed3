// The smallest frameless Qt Quick window, to hold the program against: says
// when its first frame is on the screen and waits to be killed.
#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickView>

#include <cstdio>

int main(int argc, char *argv[])
{
    QGuiApplication app(argc, argv);
    QQuickView view;
    view.setFlags(view.flags() | Qt::FramelessWindowHint);
    view.resize(1360, 875);
    QMetaObject::Connection first;
    first = QObject::connect(&view, &QQuickWindow::frameSwapped, &view, [&first] {
        QObject::disconnect(first);
        std::puts("first frame");
        std::fflush(stdout);
    });
    view.setSource(QUrl(QStringLiteral("qrc:/bench/smallest_window.qml")));
    view.show();
    return QGuiApplication::exec();
}
