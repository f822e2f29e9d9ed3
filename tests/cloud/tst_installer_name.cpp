#include "cloud/installer_name.h"
#include "tests/support/test_case.h"

#include <QRegularExpression>
#include <QUrl>

namespace {

const QString otherwise = QStringLiteral("KOLM_Streaming_Assistant.exe");

QString at(const QString &path)
{
    return QStringLiteral("https://example.com/") + path;
}

} // namespace

class TestInstallerName : public TestCase
{
    Q_OBJECT

private slots:
    void theLastPartOfTheAddressNamesTheInstaller_data()
    {
        QTest::addColumn<QString>("address");
        QTest::addColumn<QString>("name");
        const auto row = [](const char *title, const QString &address, const QString &name) {
            QTest::newRow(title) << address << name;
        };
        row("plain", at("a/b/Setup_9.1.17.exe"), "Setup_9.1.17.exe");
        row("query and fragment", at("Setup.exe?x=/y/z.exe#/w.exe"), "Setup.exe");
        row("decoded", at("My%20Setup%20%E4%B8%AD.exe"), "My Setup 中.exe");
        row("decoded once", at("a%2525.exe"), "a%25.exe");
        row("without a suffix", at("setup"), "setup");
        row("several dots", at("a.b.c.exe"), "a.b.c.exe");
        row("leading dot", at(".setup.exe"), ".setup.exe");
        row("symbols", at("a+b=c;d,e&f'(g)[h]{i}!@$^~.exe"), "a+b=c;d,e&f'(g)[h]{i}!@$^~.exe");

        row("empty", "", otherwise);
        row("only a host", "https://example.com", otherwise);
        row("slash at the end", at("folder/"), otherwise);
        row("only a query", "https://example.com?a.exe", otherwise);
        row("no address", "%%%", "%%%");
        row("one dot", at("a/."), otherwise);
        row("two dots", at("a/.."), otherwise);
        row("encoded dots", at("a/%2e%2e"), otherwise);
        row("many dots", at("......"), otherwise);
        row("blanks", at("%20%20"), otherwise);
        row("dots and blanks", at(".%20.%20."), otherwise);

        row("up", at("../../../evil.exe"), "evil.exe");
        row("encoded slash", at("..%2F..%2Fevil.exe"), "evil.exe");
        row("encoded slash at the end", at("evil.exe%2F"), otherwise);
        row("backslash", at("..\\..\\evil.exe"), "evil.exe");
        row("encoded backslash", at("..%5C..%5Cevil.exe"), "evil.exe");
        row("both", at("..%5C../..%2F..%5Cevil.exe"), "evil.exe");
        row("share", at("%5C%5Chost%5Cshare%5Cevil.exe"), "evil.exe");
        row("device path", at("%5C%5C.%5CPhysicalDrive0"), "PhysicalDrive0");
        row("doubly encoded", at("..%252F..%252Fevil.exe"), "..%2F..%2Fevil.exe");
        row("full-width slash", at("..%EF%BC%8Fevil.exe"),
            QString("..") + QChar(0xff0f) + "evil.exe");

        row("drive", at("C:evil.exe"), "C_evil.exe");
        row("drive and folder", at("C:%5CWindows%5Cevil.exe"), "evil.exe");
        row("drive, encoded", at("C%3Aevil.exe"), "C_evil.exe");
        row("stream", at("setup.exe:hidden"), "setup.exe_hidden");
        row("stream and type", at("setup.exe::$DATA"), "setup.exe__$DATA");
        row("wildcards", at("%3F%2A.exe"), "__.exe");
        row("angle brackets and bar", at("%3Ca%3E%7Cb.exe"), "_a__b.exe");
        row("quotation marks", at("a%22%20%22b.exe"), "a_ _b.exe");
        row("end of text", at("setup.exe%00.txt"), "setup.exe_.txt");
        row("line break", at("a%0D%0Ab.exe"), "a__b.exe");
        row("delete", at("a%7Fb.exe"), "a_b.exe");
        row("turned around", at("a%E2%80%AEexe.txt"), "a_exe.txt");
        row("invisible", at("a%E2%80%8Bb.exe"), "a_b.exe");
        row("line separator", at("a%E2%80%A8b.exe"), "a_b.exe");
        row("dot at the end", at("setup.exe."), "setup.exe");
        row("blank at the end", at("setup.exe%20"), "setup.exe");
        row("blank at the front", at("%20setup.exe"), "setup.exe");

        for (const char *device : {"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$", "CLOCK$",
                                   "COM0", "COM1", "COM9", "LPT0", "LPT1", "LPT9"}) {
            row(device, at(device), QString("_") + device);
            const QString small = QString(device).toLower() + ".tar.exe";
            row(qPrintable(small), at(small), '_' + small);
        }
        row("superscript port", at("COM%C2%B9.exe"), QString("_COM") + QChar(0xb9) + ".exe");
        row("device and blank", at("NUL%20.exe"), "_NUL .exe");
        row("device and stream", at("NUL:"), "NUL_");
        row("not quite a device", at("COM10.exe"), "COM10.exe");
        row("begins like one", at("CONsole.exe"), "CONsole.exe");
        row("ends like one", at("x.con"), "x.con");

        row("300 characters", at(QString(296, 'a') + ".exe"), QString(116, 'a') + ".exe");
        row("300 without a dot", at(QString(300, 'b')), QString(120, 'b'));
        row("300 Chinese", at(QString(296, QChar(0x4e2d)) + ".exe"),
            QString(116, QChar(0x4e2d)) + ".exe");
        row("long suffix", at("a." + QString(300, 'c')), "a." + QString(118, 'c'));
        row("just fits", at(QString(116, 'd') + ".exe"), QString(116, 'd') + ".exe");
        row("long device", at("NUL." + QString(116, 'g')), "_NUL." + QString(115, 'g'));
        row("long device with a suffix", at("COM1." + QString(111, 'h') + ".exe"),
            "_COM1." + QString(110, 'h') + ".exe");
        row("a device where it is cut", at("NUL" + QString("%20").repeated(200) + "x.exe"),
            "_NUL.exe");
        row("a blank where it is cut", at(QString(115, 'e') + "%20" + QString(50, 'f') + ".exe"),
            QString(115, 'e') + ".exe");
    }
    void theLastPartOfTheAddressNamesTheInstaller()
    {
        QFETCH(QString, address);
        QFETCH(QString, name);
        QCOMPARE(installerName(QUrl(address)), name);
    }

    // Every character there is, at every place of a name.
    void noCharacterMakesItMoreThanAName()
    {
        const QRegularExpression unwanted("[<>:\"/\\\\|?*\\x00-\\x1f\\x7f-\\x9f]|^\\s|[\\s.]$");
        for (int code = 0; code < 0x10000; ++code) {
            const QString c = QChar(code);
            for (const QString &decoded : {c + "a.exe", "a" + c + "b.exe", "a.exe" + c, c}) {
                const QString name =
                    installerName(QUrl(at(QString::fromLatin1(QUrl::toPercentEncoding(decoded)))));
                QVERIFY2(!name.isEmpty() && name.size() <= 120 && !name.contains(unwanted) &&
                             name != "." && name != "..",
                         qPrintable(QString::number(code, 16) + " gives " + name));
            }
        }
    }
};

KOLM_TEST_MAIN(TestInstallerName)
#include "tst_installer_name.moc"
