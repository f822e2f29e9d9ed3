#include "tests/qml/dialog_states.h"

#include <QCoreApplication>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

namespace {

void open(Interface &pages, const char *page, const QVariantMap &properties = {})
{
    QMetaObject::invokeMethod(
        pages.window(), "openDialog",
        Q_ARG(QVariant, QStringLiteral("qrc:/qml/windows/") + QLatin1String(page)),
        Q_ARG(QVariant, properties));
    pages.settle();
}

void settings(Interface &pages, const FakeOrb::Settings &settings)
{
    pages.orb.becomeSettings(settings);
    open(pages, "SettingPage.qml");
}

void type(Interface &pages, const char *field, const QString &text)
{
    pages.inDialog(field)->findChild<QObject *>("edit")->setProperty("text", text);
    pages.settle();
}

void handIn(Interface &pages)
{
    open(pages, "FeedbackPage.qml");
    type(pages, "content", QStringLiteral("Good"));
    type(pages, "contact", QStringLiteral("somebody@example.com"));
    pages.click(pages.inDialog("send"));
}

void noteChanges(ChangeRecord &record)
{
    record.beforeForwardsGo({"PA7910MGC4070026W tcp:8081 tcp:8080"});
    record.beforeSetAside(QDir::currentPath() + "/set.json", QDir::currentPath() + "/set.json.bad");
    record.beforeEdit({OutsideEdit::DriverList, QDir::currentPath() + "/openvrpaths.vrpath",
                       R"({"external_drivers":["C:\\Program Files\\Tracker\\driver"]})",
                       R"({"external_drivers":null})"});
}

QJsonArray column(const char *title, const QStringList &values)
{
    QJsonArray rows;
    const char *labels[] = {"操作系统：", "处理器：", "内存：", "显卡：", "DirectX 版本："};
    for (int i = 0; i < values.size(); ++i)
        rows.append(QJsonArray{QCoreApplication::translate("ORBManager", labels[i]), values[i]});
    return {QCoreApplication::translate("ORBManager", title), rows};
}

} // namespace

QString systemInfoText()
{
    const auto text = [](const char *source) {
        return QCoreApplication::translate("SystemInfo", source);
    };
    const QJsonArray columns = {
        column("当前配置",
               {"Windows 11 Professional Workstation", "AMD Ryzen 9 7950X3D 16-Core Processor",
                "64.0 GB", "NVIDIA GeForce RTX 4070 Ti SUPER/AMD Radeon(TM) Graphics",
                "DirectX 11.0"}),
        column("最低配置",
               {"Windows 10", text("Intel Core i5-6600/AMD锐龙3 1300X同等性能及以上"), "8 GB",
                text("NVDIA GeFore GTX 970/AMD RX 480 同等性能及以上"), "DirectX 11"}),
        column("推荐配置",
               {"Windows 10", text("Intel Core i7-9700/AMD 锐龙5 3600 同等性能及以上"), "16 GB",
                text("NVDIA GeFore RTX 3060/AMD RX 6600XT 同等性能及以上"), "DirectX 11"})};
    return QJsonDocument(columns).toJson(QJsonDocument::Compact);
}

const std::vector<DialogState> &dialogStates()
{
    static const std::vector<DialogState> states = {
        {"settings, standard", [](Interface &pages) { settings(pages, {}); }},
        {"settings, custom",
         [](Interface &pages) {
             FakeOrb::Settings custom;
             custom.definition = 3;
             custom.encoder = 3;
             custom.av1 = true;
             custom.audio = true;
             pages.orb.becomeWired(true);
             settings(pages, custom);
         }},
        {"settings, bit rate",
         [](Interface &pages) {
             FakeOrb::Settings custom;
             custom.definition = 3;
             custom.nvidia = true;
             settings(pages, custom);
             pages.inDialog("bitRate")->setProperty("value", 80);
         }},
        {"settings, installer",
         [](Interface &pages) {
             pages.orb.audioInstalled = false;
             settings(pages, {});
             pages.click(pages.inDialog("audio"));
         }},
        {"headsets",
         [](Interface &pages) {
             pages.orb.headsets.fill({{"D3A0017C4B2F91AA55", "192.168.100.123", false, true},
                                      {"D2B1118C7A0E04", "192.168.1.42", false, false}});
             emit pages.orb.showMoreHMD();
         }},
        {"headsets, one left",
         [](Interface &pages) {
             pages.orb.headsets.fill({{"D2B1118C7A0E04", "192.168.1.42", false, false}});
             emit pages.orb.showMoreHMD();
         }},
        {"headsets, none left", [](Interface &pages) { emit pages.orb.showMoreHMD(); }},
        {"feedback", [](Interface &pages) { open(pages, "FeedbackPage.qml"); }},
        {"feedback, full",
         [](Interface &pages) {
             open(pages, "FeedbackPage.qml");
             type(pages, "content", QString(600, QChar(0x753B)));
             type(pages, "contact", QStringLiteral("somebody@example.com"));
         }},
        {"feedback, sent", handIn},
        {"feedback, on its way",
         [](Interface &pages) {
             pages.feedbackBecomes = FeedbackStatus::Sending;
             handIn(pages);
         }},
        {"feedback, kept",
         [](Interface &pages) {
             pages.feedbackBecomes = FeedbackStatus::Kept;
             handIn(pages);
         }},
        {"feedback, not written",
         [](Interface &pages) {
             pages.feedbackBecomes = FeedbackStatus::NotWritten;
             handIn(pages);
         }},
        {"system",
         [](Interface &pages) {
             pages.orb.becomeSystemInfo(systemInfoText(), QStringLiteral("[]"));
             open(pages, "SystemInfoPage.qml");
         }},
        {"system, unknown", [](Interface &pages) { open(pages, "SystemInfoPage.qml"); }},
        {"changes",
         [](Interface &pages) {
             noteChanges(pages.record);
             open(pages, "ChangesPage.qml");
         }},
        {"changes, none", [](Interface &pages) { open(pages, "ChangesPage.qml"); }},
        {"confirm wireless",
         [](Interface &pages) {
             pages.orb.becomeWired(true);
             pages.click("switchMode");
         }},
        {"confirm wired", [](Interface &pages) { pages.click("switchMode"); }},
        {"power", [](Interface &pages) { emit pages.orb.showPowerTip(); }},
        {"network", [](Interface &pages) { emit pages.orb.showNetWorkSetting(); }},
        {"ports", [](Interface &pages) { emit pages.orb.showUseProtPage("nginx.exe;python.exe"); }},
        {"ports, many",
         [](Interface &pages) {
             emit pages.orb.showUseProtPage("nginx.exe;python.exe;node.exe;a program with quite a "
                                            "long name that goes on and on and on.exe;java.exe");
         }},
        {"ports, free",
         [](Interface &pages) {
             emit pages.orb.showUseProtPage("nginx.exe");
             pages.click(pages.inDialog("confirm"));
         }},
        {"driver", [](Interface &pages) { emit pages.orb.showUpdateGPUPage(); }},
        {"update",
         [](Interface &pages) {
             emit pages.update.updateSignal("1. Faster start<br>2. Fewer stalls over USB<br>3. "
                                            "Settings are kept for each headset model",
                                            false);
         }},
        {"update, forced",
         [](Interface &pages) {
             emit pages.update.updateSignal(QStringLiteral("1. Line<br>").repeated(40), true);
         }},
        {"update, failed",
         [](Interface &pages) {
             pages.update.setupSucceeds = false;
             emit pages.update.updateSignal("1. Faster start", false);
             pages.click(pages.inDialog("confirm"));
         }},
        {"update, loading",
         [](Interface &pages) {
             emit pages.update.updateSignal("", false);
             emit pages.update.processStatus(0.37F);
         }},
        {"wait",
         [](Interface &pages) {
             open(pages, "WaitPage.qml",
                  {{"text",
                    QCoreApplication::translate("ORBManager", "steamVR重启设置中，请勿操作")}});
         }},
    };
    return states;
}

void showDialog(Interface &pages, const QString &state)
{
    QVERIFY(pages.load());
    for (const DialogState &known : dialogStates()) {
        if (state == QLatin1String(known.name))
            known.show(pages);
    }
    QVERIFY(pages.dialog());
    pages.settle();
    pages.orb.calls.clear();
}

void dialogRows()
{
    QTest::addColumn<QString>("state");
    for (const DialogState &state : dialogStates())
        QTest::newRow(state.name) << QString(state.name);
}
