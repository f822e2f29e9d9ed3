#include "controller/help_links.h"

#include <QDebug>
#include <QFileInfo>

namespace help_links {

namespace {

QString pageIn(QLocale::Language language)
{
    switch (language) {
    case QLocale::Chinese:
        return QStringLiteral("zh.html");
    case QLocale::Japanese:
        return QStringLiteral("ja.html");
    default:
        return QStringLiteral("en.html");
    }
}

QUrl installedGuide(QLocale::Language language, const QString &programFolder)
{
    for (const QLocale::Language each :
         {language, QLocale::English, QLocale::Chinese, QLocale::Japanese}) {
        const QString page = programFolder + QStringLiteral("/guide/") + pageIn(each);
        if (QFileInfo(page).isFile())
            return QUrl::fromLocalFile(page);
    }
    qWarning("there is no user guide beside the program");
    return QUrl();
}

} // namespace

QUrl steamDownload()
{
    return QUrl(QStringLiteral("https://store.steampowered.com/about/"));
}

GuideAddresses builtGuideAddresses()
{
    return {QStringLiteral(KOLM_GUIDE_URL_CHINESE), QStringLiteral(KOLM_GUIDE_URL_ENGLISH)};
}

QUrl userGuide(QLocale::Language systemLanguage, const QString &programFolder,
               const GuideAddresses &addresses)
{
    const QString &address =
        systemLanguage == QLocale::Chinese ? addresses.chinese : addresses.english;
    return address.isEmpty() ? installedGuide(systemLanguage, programFolder) : QUrl(address);
}

} // namespace help_links
