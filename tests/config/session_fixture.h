// The session of the streaming server in the test's folder, and settings for it.
#pragma once

#include "config/config_manager.h"
#include "tests/support/json.h"
#include "tests/support/test_case.h"

#include <QDir>

// JSON in which the names of the cable's ends are "%in" and "%out".
inline QJsonObject jsonWithCable(QByteArray json)
{
    json.replace("%in", "CABLE Input (VB-Audio Virtual Cable)");
    json.replace("%out", "CABLE Output (VB-Audio Virtual Cable)");
    return jsonObject(json);
}

class SessionFixture : public TestCase
{
protected:
    // With its settings loaded from nowhere, in a folder of its own.
    ConfigManager manager(bool cable = false)
    {
        QDir().mkpath(path("data"));
        ConfigManager config(path("data"), [cable] { return cable; });
        config.loadDeviceSettings(false, 0);
        clearLog();
        return config;
    }
    void apply(ConfigManager &config, bool audio = false)
    {
        config.applyStreamingSettings(1, 1, 1, audio, false, false, false, false);
    }
    QJsonObject session() const { return readJson("session.json"); }

    // Rows of a `text` that is not a session's.
    static void addTextsThatAreNoJson()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("empty") << QByteArray("");
        QTest::newRow("cut off") << QByteArray(R"({"sessionSettings":{"video":{"preferredFps":9)");
        QTest::newRow("rubbish") << QByteArray("\0\1\2", 3);
        QTest::newRow("no JSON") << QByteArray("sessionSettings = {}");
    }
};
