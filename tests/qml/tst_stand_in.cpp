#include "cloud/orb_update.h"
#include "controller/orb_manager.h"
#include "tests/qml/fake_orb.h"
#include "tests/support/test_case.h"

#include <QMetaMethod>
#include <QMetaProperty>

// The pages are tested with stand-ins. What those offer is what the real objects
// offer, or the tests would prove nothing.
class TestStandIn : public TestCase
{
    Q_OBJECT

    static QString plain(QString text) { return text.remove("FakeOrb::").remove("ORBManager::"); }
    static QStringList properties(const QMetaObject &type)
    {
        QStringList all;
        for (int i = type.propertyOffset(); i < type.propertyCount(); ++i) {
            const QMetaProperty property = type.property(i);
            all.append(plain(QStringLiteral("%1 %2%3, %4")
                                 .arg(property.typeName(), property.name(),
                                      property.isWritable() ? " (writable)" : "",
                                      property.notifySignal().name())));
        }
        return all;
    }
    static QStringList methods(const QMetaObject &type)
    {
        QStringList all;
        for (int i = type.methodOffset(); i < type.methodCount(); ++i) {
            const QMetaMethod method = type.method(i);
            const char *kind = method.methodType() == QMetaMethod::Signal ? "signal " : "";
            all.append(plain(kind + QString::fromLatin1(method.typeName()) + ' ' +
                             QString::fromLatin1(method.methodSignature())));
            if (method.methodType() == QMetaMethod::Signal)
                all.append(kind + QString::fromLatin1(method.name()) + ": " +
                           method.parameterNames().join(", "));
        }
        return all;
    }
    // What the stand-in has and the real one lacks.
    static QStringList invented(const QStringList &standIn, const QStringList &real)
    {
        QStringList found;
        for (const QString &one : standIn) {
            if (!real.contains(one))
                found.append(one);
        }
        return found;
    }

private slots:
    void controllerIsLikeTheRealOne()
    {
        const QMetaObject &real = ORBManager::staticMetaObject;
        const QMetaObject &standIn = FakeOrb::staticMetaObject;
        QVERIFY(properties(standIn).size() > 20);
        QCOMPARE(invented(properties(standIn), properties(real)), QStringList());
        QCOMPARE(invented(methods(standIn), methods(real)), QStringList());
        // Nothing that a page could show is left out.
        QCOMPARE(invented(properties(real), properties(standIn)), QStringList());
    }

    void enumsHaveTheSameValues()
    {
        for (const char *name : {"Urls", "HardwareState", "SteamState"}) {
            const QMetaObject &real = ORBManager::staticMetaObject;
            const QMetaObject &standIn = FakeOrb::staticMetaObject;
            const QMetaEnum one = real.enumerator(real.indexOfEnumerator(name));
            const QMetaEnum other = standIn.enumerator(standIn.indexOfEnumerator(name));
            QVERIFY2(one.isValid() && other.isValid(), name);
            QCOMPARE(other.keyCount(), one.keyCount());
            for (int i = 0; i < one.keyCount(); ++i) {
                QCOMPARE(other.key(i), one.key(i));
                QCOMPARE(other.value(i), one.value(i));
            }
        }
    }

    void updateCheckerIsLikeTheRealOne()
    {
        QCOMPARE(
            invented(methods(FakeUpdate::staticMetaObject), methods(ORBUpdate::staticMetaObject)),
            QStringList());
    }
};

KOLM_TEST_MAIN(TestStandIn)
#include "tst_stand_in.moc"
