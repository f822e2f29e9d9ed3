#include "pc/audio_devices.h"
#include "sysinfo/system_info.h"
#include "tests/support/test_case.h"

#include <QFile>

namespace {

// What tests/sysinfo/with-sound has written down of the sound server's own list,
// as Wine shows it: without the end of a long name, and with a device of its own
// in front, which is whatever the server prefers.
QStringList listed(const char *variable)
{
    QFile list(QStringLiteral("Z:") + QString::fromLocal8Bit(qgetenv(variable)));
    if (!qEnvironmentVariableIsSet(variable) || !list.open(QIODevice::ReadOnly))
        qFatal("to be run by tests/sysinfo/with-sound");
    constexpr int longest = 31;
    QStringList names;
    for (const QString &line : QString::fromUtf8(list.readAll()).split(QChar('\n'))) {
        if (!line.isEmpty())
            names.append(line.left(longest));
    }
    if (!names.isEmpty())
        names.prepend(QStringLiteral("PulseAudio"));
    return names;
}

QStringList sorted(QStringList names)
{
    names.sort();
    return names;
}

} // namespace

// The sound devices of this PC against what its sound server lists.
class SoundWinTest : public TestCase
{
    Q_OBJECT

private slots:
    void theFirstOutputIsTheOneThatIsLookedAt()
    {
        const QStringList outputs = listed("KOLM_SOUND_OUTPUTS");
        const std::optional<audio_devices::WaveOut> first = audio_devices::firstWaveOut();
        QCOMPARE(first.has_value(), !outputs.isEmpty());
        SystemInfo info;
        QCOMPARE(info.isAudioOutputSupported(), !outputs.isEmpty());
        if (first) {
            QCOMPARE(first->name, outputs.front());
            QCOMPARE(first->channels, 2); // Wine says so of every device
            QCOMPARE(loggedCount("audio supoort :2" + outputs.front()), 1);
        }
    }

    void everyRecordingDeviceIsListed()
    {
        QCOMPARE(sorted(audio_devices::recordingNames()), sorted(listed("KOLM_SOUND_INPUTS")));
    }

    void aCableWhoseNameIsCutShortIsAnotherDevice()
    {
        const QStringList inputs = listed("KOLM_SOUND_INPUTS");
        if (!inputs.isEmpty())
            QVERIFY(inputs.contains("CABLE Output (VB-Audio Virtual "));
        QVERIFY(!SystemInfo::hasVirtualCable());
        QCOMPARE(logged().size(), 1); // the list
        for (const QString &name : inputs)
            QVERIFY(logged().front().contains(name));
    }
};

KOLM_TEST_MAIN(SoundWinTest)
#include "tst_sound_win.moc"
