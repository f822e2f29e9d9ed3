// A store of settings in the test's folder.
#pragma once

#include "config/config_manager.h"
#include "config/device_settings.h"
#include "tests/support/test_case.h"

#include <QJsonDocument>
#include <QJsonObject>

// Logged when there is no store, or none that can be read.
inline const QString settingsParseError = QStringLiteral("setting json parseError");

// By this the models of writeThreeModels() are told apart.
inline QString codec(const QJsonObject &object)
{
    return object["codec"].toString();
}

class SettingsFixture : public TestCase
{
protected:
    ConfigManager manager() const
    {
        return ConfigManager(dir(), [] { return false; });
    }
    QJsonObject saved() const { return readJson("set.json"); }

    // A store whose models can be told apart by the codec name.
    void writeThreeModels(const QString &lastSn) const
    {
        QJsonObject root;
        for (const char *model : {"D1", "D2", "D3"}) {
            QJsonObject object = device_settings::fresh();
            object["codec"] = QString("codec of ") + model;
            root[model] = object;
        }
        root["lastSn"] = lastSn;
        root["wiredOrWireless"] = 1;
        writeFile("set.json", QJsonDocument(root).toJson());
    }

    // Rows of the codec that is `expected` from such a store with the last `serial`,
    // asked with the number `model`.
    static void addSerialsAndModels()
    {
        QTest::addColumn<QString>("serial");
        QTest::addColumn<int>("model");
        QTest::addColumn<QString>("expected");
        const auto add = [](const char *serial, int model, const char *expected) {
            QTest::newRow(QByteArray("'") + serial + "', model " + QByteArray::number(model))
                << QString(serial) << model << QString("codec of ") + expected;
        };
        for (const int model : {0, 1, 2, 3, 4})
            add("D2-5", model, "D2");
        for (const char *serial : {"D1", "D3", "X9", ""})
            add(serial, 2, "D2");
        for (const char *serial : {"D1", "D3", "X9", ""})
            add(serial, 1, "D1");
        add("D1", 3, "D1");
        add("D1", 0, "D1");
        add("D3", 3, "D3");
        add("D3", 0, "D3");
        add("X9", 3, "D3");
        add("X9", 0, "D1");
        add("", 3, "D3");
        add("", 0, "D1");
    }
};
