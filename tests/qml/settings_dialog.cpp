#include "tests/qml/settings_dialog.h"

#include <QTest>

FakeOrb::Settings customSettings(int scale, int bitRate)
{
    FakeOrb::Settings settings;
    settings.definition = 3;
    settings.scale = scale;
    settings.bitRate = bitRate;
    return settings;
}

void SettingsDialog::open(const FakeOrb::Settings &settings)
{
    QVERIFY(load());
    orb.becomeSettings(settings);
    click("setting");
    QVERIFY(dialog());
    settle();
    orb.calls.clear();
}

void SettingsDialog::slide(const QString &setting, int value)
{
    QQuickItem *slider = inDialog(setting);
    auto *track = slider->findChild<QQuickItem *>("track");
    track->forceActiveFocus(Qt::TabFocusReason);
    while (slider->property("value").toInt() != value) {
        const int before = slider->property("value").toInt();
        QTest::keyClick(dialog(), before < value ? Qt::Key_Right : Qt::Key_Left);
        QVERIFY(slider->property("value").toInt() != before);
    }
}

int SettingsDialog::chosen(const QString &setting, const char *property) const
{
    return inDialog(setting)->property(property).toInt();
}

QString SettingsDialog::shownText(const QString &name) const
{
    const QQuickItem *item = inDialog(name);
    return item ? item->property("text").toString() : QStringLiteral("(not shown)");
}
