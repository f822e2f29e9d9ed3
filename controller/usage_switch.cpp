#include "controller/usage_switch.h"

#include "config/usage_choice.h"

#include <QDebug>

#include <utility>

UsageSwitch::UsageSwitch(const QString &dataDir, std::function<void()> forget, QObject *parent)
    : QObject(parent), dataDir_(dataDir), forget_(std::move(forget)),
      on_(usage_choice::isOn(dataDir))
{
}

void UsageSwitch::setOn(bool on)
{
    if (on == on_)
        return;
    on_ = on;
    if (!on)
        forget_();
    const WriteResult kept = usage_choice::store(dataDir_, on);
    if (kept != WriteResult::Ok)
        qInfo("usage.json cannot be written");
    emit changed();
    if (kept != WriteResult::Ok)
        emit notKept(kept);
}
