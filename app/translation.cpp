#include "app/translation.h"

#include <QCoreApplication>
#include <QDebug>
#include <QTranslator>

#include <memory>

QString translationFile(QLocale::Language language)
{
    switch (language) {
    case QLocale::Chinese:
        return QString();
    case QLocale::Japanese:
        return QStringLiteral("japanese.qm");
    default:
        // Named after the language of the source texts; it holds English.
        return QStringLiteral("chinese.qm");
    }
}

void installTranslation(QLocale::Language language, QCoreApplication *app)
{
    const QString file = translationFile(language);
    if (file.isEmpty())
        return;
    auto translator = std::make_unique<QTranslator>(app);
    if (!translator->load(file, QString(), QString(), QString())) {
        qWarning() << (language == QLocale::Japanese ? "japanese load fail" : "english load fail");
        return;
    }
    QCoreApplication::installTranslator(translator.release());
}
