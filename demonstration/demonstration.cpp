#include "demonstration/demonstration.h"

#include "base/clock.h"
#include "demonstration/exit_codes.h"
#include "demonstration/pictures.h"

#include <QImage>
#include <QQuickWindow>

#include <utility>

#include <chrono>

using namespace std::chrono_literals;

namespace {

constexpr auto settleTime = 1500ms; // for the window to show what was announced

} // namespace

Demonstration::Demonstration(const Wishes &wishes, Clock &clock, const ConnectionStages &stages,
                             QQuickWindow *window, Say say, QObject *parent)
    : QObject(parent), wishes_(wishes), clock_(clock), stages_(stages), window_(window),
      say_(std::move(say))
{
    connect(&stages_, &ConnectionStages::stageChanged, this, &Demonstration::onStage);
    if (window_ && say_ && window_->isSceneGraphInitialized()) {
        // It was there before this.
        QMetaObject::invokeMethod(
            this, [this] { say_(QStringLiteral("first frame")); }, Qt::QueuedConnection);
    } else if (window_ && say_) {
        firstFrame_ = connect(window_, &QQuickWindow::frameSwapped, this, [this] {
            // The render thread may have announced the second one by now.
            if (disconnect(firstFrame_))
                say_(QStringLiteral("first frame"));
        });
    }
    if (wishes_.limitSeconds > 0)
        clock_.singleShot(std::chrono::seconds(wishes_.limitSeconds), this, [this] { onLimit(); });
}

void Demonstration::say(const QString &line) const
{
    if (say_)
        say_(line);
}

void Demonstration::onStage(int stage, bool reached)
{
    const QString words = ConnectionStages::describe(static_cast<Stage>(stage));
    say((reached ? QStringLiteral("[x] ") : QStringLiteral("[ ] lost: ")) + words);
    if (static_cast<Stage>(stage) == Stage::Linked && reached && !connected_) {
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
    result_ = exit_code::notConnected;
    const int missing = stages_.firstMissing();
    say(QStringLiteral("failed after %1 s, missing: %2")
            .arg(wishes_.limitSeconds)
            .arg(missing < stageCount ? ConnectionStages::describe(static_cast<Stage>(missing))
                                      : QStringLiteral("nothing")));
    takeScreenshot([this] { emit closeRequested(); });
}

void Demonstration::takeScreenshot(const std::function<void()> &then)
{
    if (wishes_.screenshot.isEmpty() || !window_) {
        then();
        return;
    }
    pictures::take(*window_, this, [this, then](const QImage &picture) {
        saveScreenshot(picture);
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
        result_ = exit_code::noScreenshot;
}
