#include "controller/link_mode.h"

#include "base/clock.h"
#include "config/config_manager.h"
#include "controller/streaming_settings.h"

#include <QCoreApplication>
#include <QDebug>

namespace {

constexpr int switchLockTime = 4000; // ms
constexpr int storedWired = 1;
constexpr int storedWireless = 2;

QString text(const char *source)
{
    return QCoreApplication::translate("ORBManager", source);
}

} // namespace

LinkMode::LinkMode(Clock &clock, ConfigManager &config, StreamingSettings &settings,
                   Actions actions, QObject *parent)
    : QObject(parent), clock_(clock), config_(config), settings_(settings),
      actions_(std::move(actions))
{
}

void LinkMode::choose(bool wired)
{
    if (switching_) {
        emit toast(text(QT_TRANSLATE_NOOP("ORBManager", "切换模式中，请稍后再试")), 2000);
        return;
    }
    qInfo("setwired ");
    if (wired && !adbHooked_) {
        actions_.hookAdb();
        adbHooked_ = true;
    }
    switching_ = true;
    const StreamingSettings::Values values = settings_.current();
    qInfo("setwired m_timeId");
    const bool changes = wired != wired_;
    if (!startedUp_) {
        startedUp_ = true;
        settings_.apply(values, wired);
        actions_.startUp();
    } else if (changes) {
        emit toast(text(QT_TRANSLATE_NOOP("ORBManager", "正在重启，请稍候")), 13000);
        settings_.restartAround([&] { settings_.apply(values, wired); });
    }
    qInfo().noquote().nospace() << "setWiredOrWireless start: " << wired;
    config_.setWiredOrWireless(wired ? storedWired : storedWireless);
    if (changes) {
        wired_ = wired;
        emit wiredChanged();
        if (wired)
            actions_.enterWired();
        else
            actions_.enterWireless();
    }
    clock_.singleShot(switchLockTime, this, [this] { switching_ = false; });
    qInfo("setwired end");
}
