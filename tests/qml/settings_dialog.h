// The real dialog of the streaming settings, opened and worked.
#pragma once

#include "tests/qml/interface.h"

// What is stored when the user chose by numbers: scale in percent, bit rate in
// Mbit/s.
FakeOrb::Settings customSettings(int scale = 110, int bitRate = 80);

class SettingsDialog : public Interface
{
public:
    // Loads the window and opens the dialog over these settings. The calls so far
    // are forgotten.
    void open(const FakeOrb::Settings &settings = {});
    void choose(const QString &setting, int value) { click(option(setting, value)); }
    // As the user would, by keys.
    void slide(const QString &setting, int value);
    void confirm() { click(inDialog("confirm")); }

    int chosen(const QString &setting, const char *property = "value") const;
    // "(not shown)" when there is no such item.
    QString shownText(const QString &name) const;
};
