// A screen that consists of words.
#pragma once

#include "demonstration/screen.h"

#include <QMap>
#include <QStringList>

class FakeScreen final : public Screen
{
public:
    QMap<QString, QPoint> items; // "close 1": what is shown, and where
    QString openDialog;
    std::optional<bool> toastIsShown;
    bool complete = true;
    int frames = 0;
    Reply reply; // to keys, texts and pictures

    // What was done, in order.
    QStringList deeds;

    std::optional<QPoint> middleOf(const ItemName &item) const override
    {
        const auto found = items.find(text(item));
        return found == items.end() ? std::nullopt : std::optional<QPoint>(*found);
    }
    QString dialog() const override { return openDialog; }
    std::optional<bool> toast() const override { return toastIsShown; }
    bool isComplete() const override { return complete; }
    bool click(const ItemName &item) override
    {
        deeds.append("click " + text(item));
        return items.contains(text(item));
    }
    Reply pressKeys(const QString &keys) override { return done("key " + keys); }
    Reply typeText(const QString &letters) override { return done("type " + letters); }
    Reply takePicture(const QString &path) override { return done("picture " + path); }
    void activate() override { deeds.append("activate"); }
    void minimise() override { deeds.append("minimise"); }
    void hide() override { deeds.append("hide"); }
    void show() override { deeds.append("show"); }
    int framesDrawn() override
    {
        deeds.append("frames");
        return frames;
    }

private:
    static QString text(const ItemName &item)
    {
        return item.name + ' ' + QString::number(item.number);
    }
    Reply done(const QString &deed)
    {
        deeds.append(deed);
        return reply;
    }
};
