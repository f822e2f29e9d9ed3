#include "controller/link_mode.h"

#include "base/clock.h"
#include "config/config_manager.h"
#include "controller/connection_flow.h"
#include "controller/streaming_settings.h"
#include "controller/usb_headset.h"

#include <QCoreApplication>
#include <QDebug>

#include <chrono>

using namespace std::chrono_literals;

namespace {

constexpr auto switchLockTime = 4s;

QString text(const char *source)
{
    return QCoreApplication::translate("ORBManager", source);
}

} // namespace

LinkMode::LinkMode(Dependencies dependencies, QObject *parent)
    : QObject(parent), deps_(std::move(dependencies))
{
}

void LinkMode::choose(LinkKind kind)
{
    if (switching_) {
        emit toast(text(QT_TRANSLATE_NOOP("ORBManager", "切换模式中，请稍后再试")), 2000);
        return;
    }
    qInfo("setwired ");
    if (isWired(kind))
        deps_.usb.watch();
    switching_ = true;
    const SettingsChoice choice = deps_.settings.current();
    qInfo("setwired m_timeId");
    const bool changes = isWired(kind) != isWired(kind_);
    if (!started_) {
        started_ = true;
        deps_.startRun(choice, kind);
    } else if (changes) {
        restartSteamVR(choice, kind);
    }
    qInfo().noquote().nospace() << "setWiredOrWireless start: " << isWired(kind);
    deps_.config.setLink(kind);
    kind_ = kind;
    if (changes)
        enter(kind);
    deps_.clock.singleShot(switchLockTime, this, [this] { switching_ = false; });
    qInfo("setwired end");
}

void LinkMode::restartSteamVR(const SettingsChoice &choice, LinkKind kind)
{
    emit toast(text(QT_TRANSLATE_NOOP("ORBManager", "正在重启，请稍候")), 13000);
    deps_.settings.restartAround([&] { deps_.settings.apply(choice, kind); });
}

void LinkMode::enter(LinkKind kind)
{
    emit wiredChanged();
    if (isWired(kind)) {
        deps_.usb.checkDevices();
    } else {
        deps_.flow.forgetHeadset();
        deps_.usb.stop();
    }
}
