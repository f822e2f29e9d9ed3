#include "demonstration/demonstration.h"

#include "base/clock.h"
#include "base/console.h"

#include <QImage>
#include <QQuickItem>
#include <QQuickItemGrabResult>
#include <QQuickWindow>
#include <QSharedPointer>

namespace {

constexpr int settleTime = 1500; // ms for the window to show what was announced
constexpr int notConnected = 3;
constexpr int noScreenshot = 4;

} // namespace

Demonstration::Wishes Demonstration::Wishes::fromEnvironment()
{
    Wishes wishes;
    const QString road = qEnvironmentVariable("SIMPC_ROAD");
    wishes.printRoad = !road.isEmpty() && road != QLatin1String("0");
    wishes.screenshot = qEnvironmentVariable("SIMPC_SCREENSHOT");
    wishes.untilConnected = qEnvironmentVariable("SIMPC_UNTIL") == QLatin1String("connected");
    wishes.limitSeconds = qEnvironmentVariableIntValue("SIMPC_LIMIT");
    return wishes;
}

Demonstration::Demonstration(const Wishes &wishes, Clock &clock, const ConnectionRoad &road,
                             QQuickWindow *window, QObject *parent)
    : QObject(parent), wishes_(wishes), clock_(clock), road_(road), window_(window),
      start_(clock.elapsed())
{
    connect(&road_, &ConnectionRoad::stageChanged, this, &Demonstration::onStage);
    if (window_ && wishes_.printRoad) {
        firstFrame_ = connect(window_, &QQuickWindow::frameSwapped, this, [this] {
            // The render thread may have announced the second one by now.
            if (disconnect(firstFrame_))
                say(QStringLiteral("first frame"));
        });
    }
    if (wishes_.limitSeconds > 0)
        clock_.singleShot(wishes_.limitSeconds * 1000, this, [this] { onLimit(); });
}

void Demonstration::say(const QString &line) const
{
    if (!wishes_.printRoad)
        return;
    const double seconds = static_cast<double>(clock_.elapsed() - start_) / 1000;
    console::echo(QStringLiteral("road: %1 s  %2").arg(seconds, 6, 'f', 1).arg(line).toStdString());
}

void Demonstration::onStage(int stage, bool reached)
{
    const QString words = ConnectionRoad::describe(static_cast<ConnectionRoad::Stage>(stage));
    say((reached ? QStringLiteral("[x] ") : QStringLiteral("[ ] lost: ")) + words);
    if (stage == ConnectionRoad::Linked && reached && !connected_) {
        connected_ = true;
        clock_.singleShot(settleTime, this, [this] { onConnected(); });
    }
}

void Demonstration::onConnected()
{
    takeScreenshot([this] {
        if (wishes_.untilConnected)
            emit closeRequested();
    });
}

void Demonstration::onLimit()
{
    if (connected_)
        return;
    result_ = notConnected;
    const int missing = road_.firstMissing();
    say(QStringLiteral("failed after %1 s, missing: %2")
            .arg(wishes_.limitSeconds)
            .arg(missing < ConnectionRoad::stageCount
                     ? ConnectionRoad::describe(static_cast<ConnectionRoad::Stage>(missing))
                     : QStringLiteral("nothing")));
    takeScreenshot([this] { emit closeRequested(); });
}

void Demonstration::takeScreenshot(const std::function<void()> &then)
{
    if (wishes_.screenshot.isEmpty() || !window_) {
        then();
        return;
    }
    const QImage picture = window_->grabWindow();
    if (!picture.isNull()) {
        saveScreenshot(picture);
        then();
        return;
    }
    // A platform without a screen has no picture of the window; its content can
    // be drawn once more.
    const QSharedPointer<QQuickItemGrabResult> grab = window_->contentItem()->grabToImage();
    if (!grab) {
        saveScreenshot({});
        then();
        return;
    }
    connect(grab.data(), &QQuickItemGrabResult::ready, this, [this, grab, then] {
        saveScreenshot(grab->image());
        then();
    });
}

void Demonstration::saveScreenshot(const QImage &picture)
{
    if (picture.save(wishes_.screenshot)) {
        say(QStringLiteral("screenshot saved as ") + wishes_.screenshot);
        return;
    }
    say(QStringLiteral("no screenshot could be saved as ") + wishes_.screenshot);
    if (result_ == 0)
        result_ = noScreenshot;
}
