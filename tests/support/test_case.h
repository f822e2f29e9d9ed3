// The base of every test class.
#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QTest>

#include <memory>

// Collects everything that is logged during a test function, in order. A
// warning or critical line that the test did not announce fails that test, and
// so does an announced line that never came.
//
// Each test function runs in an empty working folder of its own; the folder's
// name holds blanks, an ampersand, an accent and Chinese, so that no path is
// ever safe by accident.
class TestCase : public QObject
{
    Q_OBJECT

public:
    TestCase();
    ~TestCase() override;

protected:
    // The next warning or critical line equal to `text` is expected.
    void announce(const QString &text);
    // Every line logged so far in this test function, without level, in order.
    QStringList logged() const;
    // How often a line was logged exactly so.
    int loggedCount(const QString &text) const;
    void clearLog();

    // The test's own folder (also the working directory), without a slash at
    // the end, and a file in it.
    QString dir() const;
    QString path(const QString &name) const;
    void writeFile(const QString &name, const QByteArray &content) const;
    QByteArray readFile(const QString &name) const;
    // The object in a file; empty when there is none.
    QJsonObject readJson(const QString &name) const;

protected slots:
    // Around each test function. A class with its own calls these in it.
    void init();
    void cleanup();

private:
    struct Private;
    std::unique_ptr<Private> d;
};

// The main function of a test program without a window.
#define KOLM_TEST_MAIN(TestClass)                                                                  \
    int main(int argc, char *argv[])                                                               \
    {                                                                                              \
        QCoreApplication app(argc, argv);                                                          \
        QCoreApplication::setOrganizationName(QStringLiteral("KOLM"));                             \
        TestClass test;                                                                            \
        return QTest::qExec(&test, argc, argv);                                                    \
    }
