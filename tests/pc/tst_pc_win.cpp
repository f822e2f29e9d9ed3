#include "pc/audio_devices.h"
#include "pc/memory.h"
#include "pc/network_profile.h"
#include "pc/power.h"
#include "pc/processes.h"
#include "pc/registry.h"
#include "pc/system_programs.h"
#include "sysinfo/system_info.h"
#include "tests/support/test_case.h"

#include <QDir>
#include <QFile>
#include <QProcess>

#include <memory>
#include <string>

#include <windows.h>

#include <mmsystem.h>

namespace {

constexpr int limit = 60000; // ms
const QString testKey = QStringLiteral("HKEY_CURRENT_USER\\Software\\KOLM test");

// A key below testKey's that goes with this object.
class TestKey
{
public:
    TestKey() { RegCreateKeyW(HKEY_CURRENT_USER, L"Software\\KOLM test", &key_); }
    ~TestKey()
    {
        RegCloseKey(key_);
        RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\KOLM test");
    }

    void add(const QString &subkey)
    {
        HKEY made = nullptr;
        RegCreateKeyW(key_, subkey.toStdWString().c_str(), &made);
        RegCloseKey(made);
    }
    void set(const QString &name, DWORD type, const void *data, std::size_t bytes)
    {
        RegSetValueExW(key_, name.isEmpty() ? nullptr : name.toStdWString().c_str(), 0, type,
                       static_cast<const BYTE *>(data), static_cast<DWORD>(bytes));
    }
    void setText(const QString &name, const QString &text, DWORD type = REG_SZ)
    {
        set(name, type, text.utf16(), (static_cast<std::size_t>(text.size()) + 1) * 2);
    }

private:
    HKEY key_ = nullptr;
};

} // namespace

// The facilities that only ask, each against the PC that the test runs on.
class PcWinTest : public TestCase
{
    Q_OBJECT

private slots:
    void aMissingKeyHasNothing()
    {
        QVERIFY(!registry::keyExists(testKey));
        QVERIFY(!registry::text(testKey, QStringLiteral("InstallPath")));
        QCOMPARE(registry::subkeys(testKey), QStringList());
    }

    void aTextIsReadWhole_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("text");
        QTest::newRow("a path") << QStringLiteral("InstallPath")
                                << QString::fromUtf8("C:\\游戏 & é\\Steam");
        QTest::newRow("the key's own") << QString() << QStringLiteral("default");
        QTest::newRow("nothing in it") << QStringLiteral("empty") << QString();
        QTest::newRow("the longest") << QStringLiteral("long") << QString(259, QChar('x'));
        QTest::newRow("the longest in Chinese")
            << QStringLiteral("long") << QString(259, QChar(0x4e2d));
    }

    void aTextIsReadWhole()
    {
        QFETCH(QString, name);
        QFETCH(QString, text);
        TestKey key;
        key.setText(name, text);
        const std::optional<QString> read = registry::text(testKey, name);
        QVERIFY(read);
        QCOMPARE(*read, text);
    }

    void aTextThatIsTooLongIsNothing()
    {
        TestKey key;
        for (const int length : {260, 5000}) {
            key.setText(QStringLiteral("long"), QString(length, QChar('x')));
            QVERIFY(!registry::text(testKey, QStringLiteral("long")));
        }
    }

    void aTextWithoutEndIsReadWhole()
    {
        TestKey key;
        key.set(QStringLiteral("v"), REG_SZ, L"Steam", 5 * sizeof(wchar_t));
        QCOMPARE(registry::text(testKey, QStringLiteral("v")).value_or("?"), QString("Steam"));
    }

    void aTextEndsAtItsFirstNul()
    {
        TestKey key;
        key.set(QStringLiteral("v"), REG_SZ, L"Steam\0rest", 11 * sizeof(wchar_t));
        QCOMPARE(registry::text(testKey, QStringLiteral("v")).value_or("?"), QString("Steam"));
    }

    void whatIsNoTextIsNothing()
    {
        TestKey key;
        const DWORD number = 0x00410041;
        key.set(QStringLiteral("number"), REG_DWORD, &number, sizeof number);
        key.set(QStringLiteral("bytes"), REG_BINARY, L"Steam", 12);
        QVERIFY(registry::keyExists(testKey));
        QVERIFY(!registry::text(testKey, QStringLiteral("number")));
        QVERIFY(!registry::text(testKey, QStringLiteral("bytes")));
        QVERIFY(!registry::text(testKey, QStringLiteral("none")));
    }

    void theNarrowCallReadsAsMuchAsItHasRoomFor()
    {
        TestKey key;
        const QString name = QStringLiteral("v");
        key.setText(name, QStringLiteral("C:\\Steam & VR"));
        QCOMPARE(registry::narrowText(testKey, name).value_or("?"), QString("C:\\Steam & VR"));
        key.setText(name, QString(259, QChar('x')));
        QCOMPARE(registry::narrowText(testKey, name).value_or("?"), QString(259, QChar('x')));
        key.setText(name, QString(260, QChar('x')));
        QVERIFY(!registry::narrowText(testKey, name));
        const DWORD number = 0x00410041;
        key.set(name, REG_DWORD, &number, sizeof number);
        QVERIFY(!registry::narrowText(testKey, name));
        QVERIFY(!registry::narrowText(testKey, QStringLiteral("none")));
        QVERIFY(!registry::narrowText(testKey + "\\none", name));
    }

    void anExpandableTextStaysAsItIs()
    {
        TestKey key;
        key.setText(QStringLiteral("v"), QStringLiteral("%windir%\\x"), REG_EXPAND_SZ);
        QCOMPARE(registry::text(testKey, QStringLiteral("v")).value_or("?"),
                 QString("%windir%\\x"));
    }

    void subkeysAreNamed()
    {
        TestKey key;
        QCOMPARE(registry::subkeys(testKey), QStringList());
        QStringList names{QStringLiteral("Steam App 250820"), QString::fromUtf8("中文"),
                          QString(255, QChar('k'))};
        for (const QString &name : qAsConst(names))
            key.add(name);
        QStringList read = registry::subkeys(testKey);
        read.sort();
        names.sort();
        QCOMPARE(read, names);
    }

    void theRootDecides()
    {
        const TestKey key;
        QVERIFY(registry::keyExists(testKey));
        QVERIFY(!registry::keyExists(QStringLiteral("HKEY_LOCAL_MACHINE\\Software\\KOLM test")));
        QVERIFY(!registry::keyExists(QStringLiteral("HKEY_NO_ROOT\\Software\\KOLM test")));
        QVERIFY(registry::keyExists(
            QStringLiteral("HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion")));
    }

    void aProcessIsListedUnderItsName()
    {
        QVERIFY(!SystemInfo::isProcessRunning(QStringLiteral("kolm_listed.exe")));
        const auto process = startHelper(QStringLiteral("kolm_listed.exe"));
        QVERIFY(process);
        QVERIFY(SystemInfo::isProcessRunning(QStringLiteral("kolm_listed.exe")));
        bool found = false;
        for (const processes::Entry &entry : processes::list())
            found = found || (entry.name == QLatin1String("kolm_listed.exe") &&
                              entry.pid == static_cast<quint32>(process->processId()));
        QVERIFY(found);
        process->closeWriteChannel();
        QVERIFY(process->waitForFinished(limit));
        QVERIFY(!SystemInfo::isProcessRunning(QStringLiteral("kolm_listed.exe")));
    }

    void aNameInAnotherCaseIsNotFound()
    {
        const auto process = startHelper(QStringLiteral("kolm_case.exe"));
        QVERIFY(process);
        QVERIFY(!SystemInfo::isProcessRunning(QStringLiteral("KOLM_case.exe")));
        SystemInfo::killProcesses({QStringLiteral("KOLM_case.exe")});
        QVERIFY(!process->waitForFinished(0));
        process->closeWriteChannel();
        QVERIFY(process->waitForFinished(limit));
    }

    void thePathOfAProcessIsWide()
    {
        const auto process = startHelper(QString::fromUtf8("中 & é.exe"));
        QVERIFY(process);
        // This folder's name is not in any code page either.
        QCOMPARE(QDir::fromNativeSeparators(
                     processes::modulePath(static_cast<quint32>(process->processId()))),
                 path(QString::fromUtf8("中 & é.exe")));
        process->closeWriteChannel();
        QVERIFY(process->waitForFinished(limit));
    }

    void aProcessThatIsNotThereHasNoPath()
    {
        QCOMPARE(processes::modulePath(0xFFFFFFF0), QString());
        QCOMPARE(SystemInfo::processPath(QStringLiteral("kolm_none.exe")), QString());
    }

    void killingEndsEveryProcessOfTheNameAndNoOther()
    {
        const auto first = startHelper(QStringLiteral("kolm_victim.exe"));
        const auto second = startHelper(QStringLiteral("kolm_victim.exe"));
        const auto other = startHelper(QStringLiteral("kolm_other.exe"));
        QVERIFY(first && second && other);
        SystemInfo::killProcesses({QStringLiteral("kolm_victim.exe"), QStringLiteral("none.exe")});
        QVERIFY(!SystemInfo::isProcessRunning(QStringLiteral("kolm_victim.exe")));
        QVERIFY(first->waitForFinished(limit));
        QVERIFY(second->waitForFinished(limit));
        QVERIFY(SystemInfo::isProcessRunning(QStringLiteral("kolm_other.exe")));
        other->closeWriteChannel();
        QVERIFY(other->waitForFinished(limit));
        QCOMPARE(other->exitCode(), 0);
    }

    void memoryIsWhatTheSystemSays()
    {
        ULONGLONG installed = 0; // in KB, and never less than what can be used
        QVERIFY(GetPhysicallyInstalledSystemMemory(&installed));
        QVERIFY(memory::totalPhysical() > (64u << 20));
        QVERIFY(memory::totalPhysical() <= installed * 1024);
    }

    void thePowerLineIsWhatTheSystemSays()
    {
        SYSTEM_POWER_STATUS status = {};
        QVERIFY(GetSystemPowerStatus(&status));
        const std::optional<power::AcLine> line = power::acLine();
        QVERIFY(line);
        QCOMPARE(int(*line), int(status.ACLineStatus));
    }

    void theFirstSoundOutputIsWhatTheSystemSays()
    {
        const std::optional<audio_devices::WaveOut> first = audio_devices::firstWaveOut();
        QCOMPARE(first.has_value(), waveOutGetNumDevs() > 0);
        if (first)
            QVERIFY(first->channels > 0);
        // Asking for the recording devices needs Qt's plugin, which has to be found.
        QCOMPARE(audio_devices::recordingNames().isEmpty(), waveInGetNumDevs() == 0);
    }

    void theNetworkIsAskedThroughPowershell()
    {
        const network_profile::Query query = network_profile::query();
        QCOMPARE(query.program, system_programs::pathOf("powershell"));
        QCOMPARE(query.arguments,
                 QStringList({"/c", "Get-NetConnectionProfile | findstr NetworkCategory"}));
    }

    void theProbeReadsThisPc()
    {
        const SystemInfo info;
        const QJsonObject probed = info.toJson();
        const auto value = [](const char *key, const char *name) {
            return registry::text(QStringLiteral("HKEY_LOCAL_MACHINE\\") + QLatin1String(key),
                                  QLatin1String(name))
                .value_or(QString());
        };
        QVERIFY(probed.value("os").toString().startsWith("Microsoft Windows") ||
                probed.value("os").toString().startsWith("Windows"));
        QCOMPARE(probed.value("GUID").toString(),
                 value("SOFTWARE\\Microsoft\\Cryptography", "MachineGuid"));
        QVERIFY(!probed.value("GUID").toString().isEmpty());
        QVERIFY(!probed.value("cpu").toString().isEmpty());
        QCOMPARE(probed.value("ram").toString(), SystemInfo::ramTextOf(memory::totalPhysical()));
    }

private:
    // Copies of the helper that run until they go out of scope.
    std::unique_ptr<QProcess> startHelper(const QString &name)
    {
        const QString program = path(name);
        if (!QFile::exists(program) && !QFile::copy(QStringLiteral(KOLM_TEST_HELPER), program))
            return nullptr;
        auto process = std::make_unique<QProcess>();
        process->start(program, {QStringLiteral("wait")});
        while (!process->canReadLine() && process->waitForReadyRead(limit)) {
        }
        return process->readLine().trimmed() == "ready" ? std::move(process) : nullptr;
    }
};

KOLM_TEST_MAIN(PcWinTest)
#include "tst_pc_win.moc"
