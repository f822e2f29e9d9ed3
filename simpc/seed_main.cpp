// simpc-seed: lays out the files that a scenario wants to be there.
#include "simpc/scenario.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QTextStream>

#include <cstdio>

#include <pwd.h>
#include <unistd.h>

namespace {

// The one of the account, whatever the environment says.
QString realHome()
{
    const passwd *account = getpwuid(getuid());
    return account ? QFile::decodeName(account->pw_dir) : QString();
}

int complain(const QString &text)
{
    QTextStream(stderr) << "simpc-seed: " << text << '\n';
    return 2;
}

int list()
{
    QTextStream out(stdout);
    out.setCodec("UTF-8");
    for (const QString &name : scenario::names()) {
        QString error;
        const Scenario scenario = scenario::load(name, &error);
        if (!error.isEmpty())
            return complain(error);
        out << name << ": " << scenario.title << '\n';
    }
    return 0;
}

int printKeys()
{
    QTextStream out(stdout);
    out.setCodec("UTF-8");
    out << scenario::keysText();
    return 0;
}

int sayCloud(const QString &name)
{
    QString error;
    const Scenario scenario = scenario::load(name, &error);
    if (!error.isEmpty())
        return complain(error);
    QTextStream(stdout) << scenario.cloud << '\n';
    return 0;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Lays out the files of a scenario: what the user's home and the program's working\n"
        "folder hold before the program starts. Files of the same names are replaced."));
    parser.addHelpOption();
    const QCommandLineOption home(QStringLiteral("home"),
                                  QStringLiteral("The home folder to fill; made if needed."),
                                  QStringLiteral("DIR"));
    const QCommandLineOption work(QStringLiteral("work"),
                                  QStringLiteral("The working folder to fill; made if needed."),
                                  QStringLiteral("DIR"));
    const QCommandLineOption listing(QStringLiteral("list"),
                                     QStringLiteral("Lists the compiled-in scenarios."));
    const QCommandLineOption keys(
        QStringLiteral("keys"),
        QStringLiteral("Prints the tables of all keys, as simpc/README.md ends with them."));
    const QCommandLineOption cloud(
        QStringLiteral("cloud"),
        QStringLiteral("Only says what the scenario's cloud answers (cloud-sim --answers), or "
                       "\"absent\"."));
    parser.addOptions({home, work, listing, keys, cloud});
    parser.addPositionalArgument(QStringLiteral("SCENARIO"),
                                 QStringLiteral("A scenario's name, or the path of a file."));
    parser.process(app);

    if (parser.isSet(listing))
        return list();
    if (parser.isSet(keys))
        return printKeys();
    const QStringList names = parser.positionalArguments();
    if (names.size() == 1 && parser.isSet(cloud))
        return sayCloud(names.first());
    if (names.size() != 1 || !parser.isSet(home) || !parser.isSet(work))
        return complain(QStringLiteral("wanted: SCENARIO --home DIR --work DIR (or --help)"));
    // A slip of the hand must not cost somebody's settings.
    const QString asked = QFileInfo(parser.value(home)).canonicalFilePath();
    if (!asked.isEmpty() && asked == QFileInfo(realHome()).canonicalFilePath())
        return complain(QStringLiteral("that is your own home folder; choose another"));

    QString error;
    const Scenario scenario = scenario::load(names.first(), &error);
    if (!error.isEmpty() ||
        !scenario::layOutFiles(scenario.files, parser.value(home), parser.value(work), &error))
        return complain(error);
    return 0;
}
