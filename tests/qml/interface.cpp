#include "tests/qml/interface.h"

#include "controller/qml_types.h"
#include "qml/resources.h"
#include "res/resources.h"
#include "ui/clock_timer.h"
#include "ui/rest.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QQmlContext>
#include <QQmlExpression>
#include <QQuickWindow>
#include <QTest>

// Q_INIT_RESOURCE declares a function of the global namespace.
static void initTestPages()
{
    Q_INIT_RESOURCE(kolm_test_pages);
}

namespace {

ManualClock *clockOfPages = nullptr;

class PageTimer : public ClockTimer
{
public:
    PageTimer() : ClockTimer(*clockOfPages) {}
};

} // namespace

void registerInterface()
{
    QQuickWindow::setTextRenderType(QQuickWindow::NativeTextRendering);
    initTestPages();
    res::initResources();
    qml::initResources();
    qmlRegisterType<FramelessQuickWindow>("QtHeron.Window", 1, 0, "FramelessWindow");
    qmlRegisterType<Rest>("QtHeron.Window", 1, 0, "Rest");
    qmlRegisterType<PageTimer>("QtHeron.Window", 1, 0, "ClockTimer");
    registerCheckTypes();
    qmlRegisterUncreatableType<FakeOrb>("ORBManager", 1, 0, "ORBManagerCLS",
                                        QStringLiteral("there is one, called orb"));
    registerControllerTypes();
    const int id =
        QFontDatabase::addApplicationFont(QStringLiteral(":/res/SourceHanSansCN-Medium.ttf"));
    QFont font = QGuiApplication::font();
    font.setFamily(QFontDatabase::applicationFontFamilies(id).value(0));
    font.setPixelSize(20);
    QGuiApplication::setFont(font);
}

FirstSize::FirstSize()
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool FirstSize::eventFilter(QObject *object, QEvent *event)
{
    const auto *window = qobject_cast<QWindow *>(object);
    if (window && event->type() == QEvent::PlatformSurface && !size.isValid())
        size = window->size();
    return false;
}

QUrl StandInDialogs::intercept(const QUrl &url, DataType type)
{
    if (type == QmlFile && url.path().startsWith(QLatin1String("/qml/windows/")) &&
        !url.path().endsWith(QLatin1String("/SelectModePage.qml")))
        return QUrl(QStringLiteral("qrc:/tests/StandInDialog.qml"));
    return url;
}

Interface::Interface()
{
    clockOfPages = &clock;
    FramelessQuickWindow::setSharedEngine(&engine_);
}

Interface::~Interface() = default;

FramelessQuickWindow *Interface::load()
{
    if (!realDialogs)
        standInPages();
    engine_.rootContext()->setContextProperty(QStringLiteral("orb"), &orb);
    engine_.rootContext()->setContextProperty(QStringLiteral("orbconnection"), &orb.connection);
    engine_.rootContext()->setContextProperty(QStringLiteral("orbusage"), &usage);
    engine_.rootContext()->setContextProperty(QStringLiteral("orbrecord"), &changes);
    engine_.rootContext()->setContextProperty(QStringLiteral("orbfeedback"), &feedback);
    orb.onFeedback = [this] { feedback.set(feedbackBecomes); };
    engine_.rootContext()->setContextProperty(QStringLiteral("orbstages"), &stageModel_);
    if (hasChecks)
        engine_.rootContext()->setContextProperty(QStringLiteral("orbchecks"), &checks);
    if (hasUpdate)
        engine_.rootContext()->setContextProperty(QStringLiteral("orbupdate"), &update);
    return loadAlone(QStringLiteral("qrc:/qml/mainWindow.qml"));
}

void Interface::standInPages()
{
    engine_.setUrlInterceptor(&standIns_);
}

FramelessQuickWindow *Interface::loadAlone(const QString &url, const QVariantMap &properties)
{
    QObject::connect(&engine_, &QQmlEngine::exit, [this](int code) { exitCodes_ << code; });
    engine_.setInitialProperties(properties);
    engine_.load(QUrl(url));
    window_ = qobject_cast<FramelessQuickWindow *>(engine_.rootObjects().value(0));
    return window_;
}

FramelessQuickWindow *Interface::dialog() const
{
    const QObject *place = find(QStringLiteral("subWin"));
    QObject *item = place ? place->property("item").value<QObject *>() : nullptr;
    auto *window = qobject_cast<FramelessQuickWindow *>(item);
    return window && window->isVisible() ? window : nullptr;
}

QString Interface::dialogFile() const
{
    const QUrl source = find(QStringLiteral("subWin"))->property("source").toUrl();
    return source.toString().section('/', -1);
}

QStringList Interface::dialogTexts() const
{
    return texts(dialog()->contentItem());
}

void Interface::press(Qt::Key key)
{
    QTest::keyClick(dialog(), key);
}

QQuickItem *Interface::inDialog(const QString &objectName) const
{
    if (!dialog())
        return nullptr;
    const QList<QQuickItem *> items = shownItems(dialog()->contentItem());
    for (QQuickItem *item : items) {
        if (item->objectName() == objectName)
            return item;
    }
    return nullptr;
}

QQuickItem *Interface::option(const QString &setting, int value) const
{
    const QList<QQuickItem *> items = shownItems(inDialog(setting));
    for (QQuickItem *item : items) {
        if (item->objectName() == QStringLiteral("option%1").arg(value))
            return item;
    }
    return nullptr;
}

QObject *Interface::find(const QString &objectName) const
{
    if (QObject *found = window_->findChild<QObject *>(objectName))
        return found;
    const QList<QQuickItem *> items = shownItems(window_->contentItem());
    for (QQuickItem *item : items) {
        if (item->objectName() == objectName)
            return item;
    }
    return nullptr;
}

QQuickItem *Interface::item(const QString &objectName) const
{
    return qobject_cast<QQuickItem *>(find(objectName));
}

bool Interface::shown(const QString &objectName) const
{
    const QQuickItem *found = item(objectName);
    return found && found->isVisible();
}

QString Interface::text(const QString &objectName, const char *property) const
{
    const QObject *found = find(objectName);
    return found ? found->property(property).toString() : QStringLiteral("(no such object)");
}

int Interface::value(const QString &name) const
{
    QQmlExpression expression(qmlContext(window_), window_, name);
    const QVariant found = expression.evaluate();
    if (found.type() != QVariant::Int)
        qWarning("%s is no value", qPrintable(name));
    return found.toInt();
}

bool Interface::is(const QString &objectName, const char *property, const QString &name) const
{
    const QObject *found = find(objectName);
    return found && found->property(property) == value(name);
}

void Interface::settle() const
{
    for (int frame = 0; frame < 3; ++frame) {
        QCoreApplication::processEvents();
        window_->grabWindow();
        if (FramelessQuickWindow *open = dialog())
            open->grabWindow();
    }
}

void Interface::activate() const
{
    settle();
    window_->requestActivate();
    QTRY_VERIFY(window_->isActive());
}

void Interface::click(const QString &objectName)
{
    QQuickItem *found = item(objectName);
    QVERIFY2(found, qPrintable("no such item: " + objectName));
    click(found);
}

void Interface::click(QQuickItem *item)
{
    QVERIFY(item && item->isVisible());
    settle();
    const QPointF middle = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
    QTest::mouseClick(item->window(), Qt::LeftButton, {}, middle.toPoint());
}

QQuickItem *Interface::button(const QString &text, QQuickItem *root) const
{
    const QList<QQuickItem *> items = shownItems(root ? root : window_->contentItem());
    for (QQuickItem *item : items) {
        if (item->metaObject()->indexOfSignal("clicked()") >= 0 &&
            item->property("text").toString() == text)
            return item;
    }
    return nullptr;
}

QStringList Interface::texts(QQuickItem *root)
{
    QStringList found;
    const QList<QQuickItem *> items = shownItems(root);
    for (const QQuickItem *item : items) {
        const QString text = item->property("text").toString();
        if (item->inherits("QQuickText") && !text.isEmpty())
            found.append(text);
    }
    return found;
}

QList<QQuickItem *> Interface::shownItems(QQuickItem *root)
{
    QList<QQuickItem *> items;
    if (!root->isVisible())
        return items;
    items.append(root);
    const QList<QQuickItem *> children = root->childItems();
    for (QQuickItem *child : children)
        items.append(shownItems(child));
    return items;
}
